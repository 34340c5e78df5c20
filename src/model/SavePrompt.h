#pragma once

#include <QString>

#include <cstdint>

namespace fenrik {

class Boxes;
class CSystem;

/// What the user is asked before a system is saved: whether, and under which name.
class SavePrompt {
public:
    /// What SaveSystem is called with: ask first, and only if something would be lost; or save at once.
    static constexpr std::int32_t kAsk = 4;
    static constexpr std::int32_t kYes = 6;
    static constexpr std::int32_t kNo = 7;

    /// `folder`, without a separator at its end, is where systems are saved.
    SavePrompt(Boxes& boxes, const QString& folder) : mBoxes(boxes), mFolder(folder) {}

    /// The name to save `system` under; empty if it is not to be saved. `response` becomes the answer, kYes or kNo, if
    /// the user was asked. A name that can't be one was refused in a box.
    [[nodiscard]] QString Ask(const CSystem& system, std::int32_t& response);

private:
    [[nodiscard]] QString AskName(const QString& present);

    Boxes& mBoxes;
    QString mFolder;
};

}  // namespace fenrik
