#pragma once

#include <QString>

namespace fenrik {

/// Name, version and build flavour of the program, as its version record tells them.
class VersionInfo {
public:
    /// `comments`: free text; the words "beta", "test" and "debug" in any case are the flavours.
    VersionInfo(int major, int minor, int revision, const QString& comments);

    /// Those of this build.
    [[nodiscard]] static VersionInfo OfThisBuild();

    [[nodiscard]] static QString Title() { return QStringLiteral("Fenrik Diagnostics"); }
    [[nodiscard]] static QString Copyright();

    /// major "." minor ".3": the release has been 3 for so long that it is a literal.
    [[nodiscard]] QString GetVersionRelease() const;

    /// major "." minor "." revision.
    [[nodiscard]] QString MajorMinorRevision() const;

    /// Revision modulo 100 as three digits.
    [[nodiscard]] QString Build() const;

    [[nodiscard]] bool IsBeta() const { return mIsBeta; }
    [[nodiscard]] bool IsTest() const { return mIsTest; }
    [[nodiscard]] bool IsDebug() const { return mIsDebug; }

private:
    int mMajor;
    int mMinor;
    int mRevision;
    bool mIsBeta;
    bool mIsTest;
    bool mIsDebug;
};

}  // namespace fenrik
