#include "platform/RegistryStore.h"

#include "platform/Error.h"
#include "support/DatabaseFile.h"
#include "support/Printers.h"

#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>

#include <limits>

namespace fenrik {
namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAre;

class RegistryStoreTest : public testing::Test {
protected:
    QTemporaryDir folder;
    QString path = folder.path() + QStringLiteral("/config/registry.ini");
    RegistryStore registry{path};
};

TEST_F(RegistryStoreTest, AKeyThatNobodyMadeDoesNotExist)
{
    EXPECT_FALSE(registry.KeyExists("Software\\Makers"));
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(RegistryStoreTest, CreatingAKeyCreatesThoseAboveIt)
{
    registry.CreateKey("Software\\Makers\\Tool");
    EXPECT_TRUE(registry.KeyExists("Software\\Makers\\Tool"));
    EXPECT_TRUE(registry.KeyExists("Software\\Makers\\"));
    EXPECT_TRUE(registry.KeyExists("Software"));
    EXPECT_FALSE(registry.KeyExists("Software\\Make"));
}

TEST_F(RegistryStoreTest, AKeyWithoutValuesIsStillThereInTheNextRun)
{
    registry.CreateKey("Software\\Makers\\");
    EXPECT_TRUE(RegistryStore(path).KeyExists("Software\\Makers"));
}

TEST_F(RegistryStoreTest, CreatingAKeyThatExistsKeepsItsValues)
{
    registry.WriteValue("Makers", "", QStringLiteral("mine"));
    registry.CreateKey("Makers");
    EXPECT_EQ(registry.ReadValue("Makers", "").toString(), "mine");
}

TEST_F(RegistryStoreTest, ListsTheKeysRightBelow)
{
    registry.CreateKey("Makers\\One\\Deep");
    registry.CreateKey("Makers\\Two");
    registry.WriteValue("Makers", "Three", 3);
    EXPECT_THAT(registry.SubKeys("Makers\\"), UnorderedElementsAre("One", "Two"));
    EXPECT_THAT(registry.SubKeys("Elsewhere"), IsEmpty());
}

TEST_F(RegistryStoreTest, DeletingAKeyTakesAllThatIsInItAndNoNeighbour)
{
    registry.WriteValue("Makers\\One\\Deep", "Value", 1);
    registry.CreateKey("Makers\\OneMore");
    registry.DeleteKey("Makers\\One");
    EXPECT_FALSE(registry.KeyExists("Makers\\One"));
    EXPECT_FALSE(registry.ReadValue("Makers\\One\\Deep", "Value").isValid());
    EXPECT_TRUE(RegistryStore(path).KeyExists("Makers\\OneMore"));
}

TEST_F(RegistryStoreTest, AMissingValueIsInvalidAndAnEmptyOneIsNot)
{
    registry.WriteValue("Makers", "Empty", QString());
    EXPECT_TRUE(registry.ReadValue("Makers", "Empty").isValid());
    EXPECT_FALSE(registry.ReadValue("Makers", "Other").isValid());
}

TEST_F(RegistryStoreTest, ASlashOfAnyKindInANameBecomesALine)
{
    EXPECT_EQ(RegistryStore::OnePart("a\\b/c"), "a_b_c");
    registry.WriteValue("Makers", "a\\b", 5);
    EXPECT_EQ(registry.ReadValue("Makers", "a_b").toInt(), 5);
}

class RegistryText : public RegistryStoreTest, public testing::WithParamInterface<const char*> {};

TEST_P(RegistryText, ComesBackAsATextInTheNextRun)
{
    const QString text = QString::fromUtf8(GetParam());
    registry.WriteValue("Makers\\{4711-A}", "UserName", text);
    const QVariant value = RegistryStore(path).ReadValue("Makers\\{4711-A}", "UserName");
    EXPECT_EQ(value.typeId(), int(QMetaType::QString));
    EXPECT_EQ(value.toString(), text);
}

INSTANTIATE_TEST_SUITE_P(Texts, RegistryText,
                         testing::Values("", "Ann", "a, b; c=d", " blanks ", "\"quoted\"", "[group]", "@Invalid()",
                                         "back\\slash", "Jörg 日本", "12", "dword:12", "text:12", "two\nlines"));

class RegistryNumber : public RegistryStoreTest, public testing::WithParamInterface<std::int32_t> {};

TEST_P(RegistryNumber, ComesBackAsANumberInTheNextRun)
{
    registry.WriteValue("Makers", "ServerPort", GetParam());
    const QVariant value = RegistryStore(path).ReadValue("Makers", "ServerPort");
    EXPECT_EQ(value.typeId(), int(QMetaType::Int));
    EXPECT_EQ(value.toInt(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Numbers, RegistryNumber,
                         testing::Values(0, -1, 48051, std::numeric_limits<std::int32_t>::max(),
                                         std::numeric_limits<std::int32_t>::min()));

TEST_F(RegistryStoreTest, AFileThatCantBeWrittenIsAnError)
{
    QFile inTheWay(folder.path() + QStringLiteral("/config"));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    try {
        registry.CreateKey("Makers");
        FAIL() << "nothing was thrown";
    } catch (const Error& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::kPathFileAccess);
    }
}

// It would be the key itself once more, and deleting it would delete everything.
TEST_F(RegistryStoreTest, BetweenTwoSeparatorsIsNoKey)
{
    const QString written = folder.path() + QStringLiteral("/written.ini");
    MakeFile(written, "[Makers]\n\\Tool\\Name=Ann\n/Other\\Name=Bob\nTool\\Name=Cid\n");
    EXPECT_EQ(RegistryStore(written).SubKeys("Makers"), QStringList{"Tool"});
}

TEST_F(RegistryStoreTest, ADamagedFileIsAnErrorAndStaysAsItIs)
{
    const QString damaged = folder.path() + QStringLiteral("/damaged.ini");
    const QByteArray bytes = "[Makers]\nName=Ann\nno value in this line\n";
    QFile file(damaged);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.write(bytes);
    file.close();
    RegistryStore broken(damaged);
    EXPECT_THROW(static_cast<void>(broken.SubKeys("Makers")), Error);
    EXPECT_THROW(broken.WriteValue("Makers", "Name", QStringLiteral("Bob")), Error);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), bytes);
}

}  // namespace
}  // namespace fenrik
