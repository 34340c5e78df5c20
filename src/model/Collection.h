#pragma once

#include "platform/SubscriptOutOfRange.h"

#include <QString>

#include <algorithm>
#include <memory>
#include <vector>

namespace fenrik {

/// Owned objects in order, counted from 1, each under a key of its own. Constness is that of the list and not of
/// the objects in it.
template <typename T>
class Collection {
public:
    [[nodiscard]] int Count() const { return int(mItems.size()); }
    [[nodiscard]] bool Contains(int position) const { return position >= 1 && position <= Count(); }

    /// The object at `position`, 1 to Count; throws Error 9 (subscript out of range) outside.
    [[nodiscard]] T& operator[](int position) const
    {
        if (!Contains(position))
            throw SubscriptOutOfRange();
        return *mItems[std::size_t(position - 1)].object;
    }

    /// The object at `position`, or nothing outside.
    [[nodiscard]] T* Find(int position) const { return Contains(position) ? &(*this)[position] : nullptr; }

    /// Position of `key`, 0 if it is not there.
    [[nodiscard]] int PositionOf(const QString& key) const
    {
        const auto isKey = [&key](const Item& item) { return item.key == key; };
        const auto found = std::find_if(mItems.begin(), mItems.end(), isKey);
        return found == mItems.end() ? 0 : int(found - mItems.begin()) + 1;
    }

    /// Appends; false, and the object is dropped, if `key` is taken.
    bool Add(std::unique_ptr<T> object, const QString& key)
    {
        if (PositionOf(key) != 0)
            return false;
        mItems.push_back({key, std::move(object)});
        return true;
    }

    /// Puts `object` where another stood, which is dropped. `position` is from 1 to Count.
    void Replace(int position, std::unique_ptr<T> object, const QString& key)
    {
        mItems.at(std::size_t(position - 1)) = {key, std::move(object)};
    }

    /// Hands the object at `position` (1 to Count) out; its place stays, empty, until the collection goes.
    [[nodiscard]] std::unique_ptr<T> Take(int position)
    {
        return std::move(mItems.at(std::size_t(position - 1)).object);
    }

    void RemoveLast() { mItems.pop_back(); }

private:
    struct Item {
        QString key;
        std::unique_ptr<T> object;
    };
    std::vector<Item> mItems;
};

}  // namespace fenrik
