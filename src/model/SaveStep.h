#pragma once

#include <QString>

#include <functional>

namespace fenrik {

class Boxes;

/// How a part of the work of saving ended.
enum class SaveResult {
    Done,
    Skipped,  ///< it failed, and the user goes on without it
    Ended,    ///< it failed, and so did the whole
};

/// The words in which a failure is told.
struct SaveWords {
    QString title;       ///< of the boxes of a file that can't be written
    QString otherTitle;  ///< of the box of any other failure
    QString what;        ///< "system" or "commands"
};

/// Runs `step`, a part of saving to the file `path`. A failure is told in a box; one that is not the file's own, as a
/// full disk, asks whether to go on. Without `boxes` (null) nobody is asked, and a failure ends the whole.
[[nodiscard]] SaveResult RunSaveStep(Boxes* boxes, const SaveWords& words, const QString& path,
                                     const std::function<void()>& step);

}  // namespace fenrik
