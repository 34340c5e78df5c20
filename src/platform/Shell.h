#pragma once

#include <QString>

namespace fenrik {

/// Hands files, folders and web pages to the desktop.
class Shell {
public:
    virtual ~Shell() = default;

    /// What an operation gives: kOpened, or the reason why not.
    static constexpr int kOpened = 0;
    static constexpr int kAccessDenied = 5;    ///< the file can't be read
    static constexpr int kNoAssociation = 31;  ///< no program opens such things

    /// Verb "open" for a file.
    virtual int OpenFile(const QString& path);

    /// Verb "open" for a web page.
    virtual int OpenPage(const QString& address);

    /// Verb "explore" for a folder.
    virtual int Explore(const QString& folder);
};

}  // namespace fenrik
