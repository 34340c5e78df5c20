#pragma once

#include <QString>

namespace fenrik {

/// Hands files, folders and web pages to the desktop.
class Shell {
public:
    virtual ~Shell() = default;

    /// What came of it. NoAssociation: no program opens such files.
    enum class Result { Opened, NoAssociation };

    /// Verb "open" for a file.
    virtual Result OpenFile(const QString& path);

    /// Verb "open" for a web page.
    virtual Result OpenPage(const QString& address);

    /// Verb "explore" for a folder.
    virtual Result Explore(const QString& folder);
};

}  // namespace fenrik
