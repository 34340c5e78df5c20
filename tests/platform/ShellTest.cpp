#include "platform/Shell.h"

#include "support/Printers.h"

#include <QDesktopServices>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Stands in for the desktop: keeps the addresses that it is given.
class DesktopRecorder : public QObject {
    Q_OBJECT

public:
    DesktopRecorder()
    {
        QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "Take");
        QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "Take");
    }
    ~DesktopRecorder() override
    {
        QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
        QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
    }

    Q_INVOKABLE void Take(const QUrl& url) { taken.push_back(url); }

    std::vector<QUrl> taken;
};

class ShellTest : public testing::Test {
protected:
    DesktopRecorder desktop;
    QTemporaryDir folder;
    Shell shell;
};

TEST_F(ShellTest, OpensAFileUnderAnyName)
{
    const QString path = folder.path() + QStringLiteral("/a #1 50% file?.txt");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(shell.OpenFile(path), Shell::kOpened);
    EXPECT_THAT(desktop.taken, ElementsAre(QUrl::fromLocalFile(path)));
}

TEST_F(ShellTest, AFileThatCannotBeReadIsDenied)
{
    EXPECT_EQ(shell.OpenFile(folder.path() + QStringLiteral("/missing.txt")), Shell::kAccessDenied);
    EXPECT_THAT(desktop.taken, IsEmpty());
}

TEST_F(ShellTest, ExploresAFolder)
{
    EXPECT_EQ(shell.Explore(folder.path()), Shell::kOpened);
    EXPECT_THAT(desktop.taken, ElementsAre(QUrl::fromLocalFile(folder.path())));
}

TEST_F(ShellTest, OpensAWebPage)
{
    EXPECT_EQ(shell.OpenPage(QStringLiteral("https://example.com/x?y=1")), Shell::kOpened);
    EXPECT_THAT(desktop.taken, ElementsAre(QUrl(QStringLiteral("https://example.com/x?y=1"))));
}

TEST_F(ShellTest, WhatNothingOpensHasNoAssociation)
{
    EXPECT_EQ(shell.OpenPage(QStringLiteral("fenrik-unknown:x")), Shell::kNoAssociation);
}

}  // namespace
}  // namespace fenrik

#include "ShellTest.moc"
