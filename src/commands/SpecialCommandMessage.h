#pragma once

#include "link/CMessage.h"

#include <QString>

#include <vector>

namespace fenrik {

class CSpecialCommand;

/// A message that is put together from the items of a special command and a node. Without a special command it is a
/// message whose `data` is a node.
///
/// The special command is shared with the message list, which selects something else in it for each message that it
/// names; so the selection is kept here and made anew before it is used.
class SpecialCommandMessage {
public:
    /// An item in a list: what is shown, and the packed key that stands behind it.
    struct Entry {
        QString text;
        std::int32_t code;
    };

    /// Begins with what `message` says. `special` may be null and outlives the object. `selectedNode`, 0 for none,
    /// stands in where the message names no node. Throws Error 9 if the special command has no items.
    SpecialCommandMessage(CSpecialCommand* special, const CMessage& message, int selectedNode);

    /// The message of command `command` that selects the item of the packed key `code`, and no node.
    [[nodiscard]] static CMessage OfItem(CSpecialCommand* special, int command, std::int32_t code);

    [[nodiscard]] const CMessage& Message() const { return mMessage; }

    [[nodiscard]] bool IsSpecial() const { return mSpecial != nullptr; }
    /// A node stands in the message.
    [[nodiscard]] bool TakesNode() const;
    [[nodiscard]] bool RequiresMount() const;

    /// Each name once, with the first item of that name.
    [[nodiscard]] std::vector<Entry> Names() const;
    /// The items of the selected name by what is special about them. Those that only bear a hint are left out.
    [[nodiscard]] std::vector<Entry> Specifics() const;

    [[nodiscard]] std::int32_t SelectedCode() const { return mCode; }
    [[nodiscard]] QString SelectedName() const;
    /// The selected item's hint for the user, mostly empty.
    [[nodiscard]] QString Hint() const;

    void Select(std::int32_t code);

    /// What the node's bits can't hold is cut off.
    void SetNode(int node);
    [[nodiscard]] int Node() const { return mNode; }

private:
    void Restore() const;
    void Update();

    CSpecialCommand* mSpecial;
    CMessage mMessage;
    std::int32_t mCode = 0;
    int mNode = 0;
};

}  // namespace fenrik
