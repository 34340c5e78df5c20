#pragma once

#include <QString>
#include <QStringList>

namespace fenrik {

/// What the user of fenrik-dav asked for.
struct CommandLine {
    enum class Action : std::uint8_t { Info, Tables, Dump, Convert, ShowText, Misused };

    Action action = Action::Misused;
    QString file;
    QString table;   ///< of Dump
    QString target;  ///< of Convert
    bool force = false;
    QString text;  ///< of ShowText: the help or the version; of Misused: what is wrong

    /// `arguments` begin with the program's name.
    [[nodiscard]] static CommandLine Parse(const QStringList& arguments);
};

}  // namespace fenrik
