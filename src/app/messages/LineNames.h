#pragma once

#include <QHash>
#include <QString>

#include <cstdint>
#include <vector>

namespace fenrik {

/// The texts and icon keys that lines share, each set kept once under a number. Numbers stay good for good, so that a
/// caller may keep the ones of its commands.
class LineNames {
public:
    using Id = std::uint32_t;

    struct Entry {
        QString text;     ///< first column of the line
        QString icon;     ///< icon key: "On", "Off", "Command", "Analog" or a special command's own
        QString keyName;  ///< the name in the line's key; differs from the text where a special command decodes it
        Id key = 0;       ///< the same for all entries of one keyName

        friend bool operator==(const Entry& a, const Entry& b)
        {
            return a.text == b.text && a.icon == b.icon && a.keyName == b.keyName;
        }
        friend std::size_t qHash(const Entry& entry, std::size_t seed)
        {
            return qHashMulti(seed, entry.text, entry.icon, entry.keyName);
        }
    };

    [[nodiscard]] Id Intern(const QString& text, const QString& icon, const QString& keyName);

    [[nodiscard]] const Entry& operator[](Id id) const { return mEntries[id]; }
    [[nodiscard]] std::size_t Size() const { return mEntries.size(); }

private:
    std::vector<Entry> mEntries;
    QHash<Entry, Id> mIds;
    QHash<QString, Id> mKeys;
};

}  // namespace fenrik
