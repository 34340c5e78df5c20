#include "modem/PhoneNumbers.h"

#include "modem/PhoneNumberEdit.h"
#include "platform/SettingsStore.h"
#include "support/DatabaseFile.h"
#include "support/Printers.h"

#include <QAbstractItemView>
#include <QAction>
#include <QClipboard>
#include <QCompleter>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PhoneNumbersTest : public testing::Test {
protected:
    [[nodiscard]] QString Path() const { return dir.filePath("window.ini"); }

    QTemporaryDir dir;
    SettingsStore store{Path()};
    PhoneNumbers numbers{store};
};

TEST_F(PhoneNumbersTest, BeginEmpty)
{
    EXPECT_THAT(numbers.All(), IsEmpty());
}

TEST_F(PhoneNumbersTest, ComeWithTheLastOneFirst)
{
    numbers.Add("555-0001");
    numbers.Add("(555) 0002");
    EXPECT_THAT(numbers.All(), ElementsAre("(555) 0002", "555-0001"));
}

TEST_F(PhoneNumbersTest, OfTheSameDigitsAreOne)
{
    numbers.Add("555-0001");
    numbers.Add("555-0002");
    numbers.Add("555 00 01");
    EXPECT_THAT(numbers.All(), ElementsAre("555 00 01", "555-0002"));
}

TEST_F(PhoneNumbersTest, AreTenAtMost)
{
    for (int i = 100; i < 115; ++i)
        numbers.Add(QString::number(i));
    EXPECT_THAT(numbers.All(), SizeIs(10));
    EXPECT_EQ(numbers.All().constFirst(), "114");
    EXPECT_EQ(numbers.All().constLast(), "105");
}

TEST_F(PhoneNumbersTest, AreThereInTheNextRun)
{
    numbers.Add("555-0001");
    store.Sync();
    SettingsStore next(Path());
    EXPECT_THAT(PhoneNumbers(next).All(), ElementsAre("555-0001"));
}

TEST_F(PhoneNumbersTest, OfADamagedFileAreThoseThatAreThere)
{
    MakeFile(Path(), "[PhoneNumbers]\nNumber3=911\nNumber2=\nNumber7=911\nNumberX=1\nNumber11=2\n");
    SettingsStore damaged(Path());
    EXPECT_THAT(PhoneNumbers(damaged).All(), ElementsAre("911"));
}

TEST(FilteredTelephoneNumber, KeepsTheDigitsAlone)
{
    EXPECT_EQ(FilteredTelephoneNumber("+1 (555) 12-34.x"), "15551234");
    EXPECT_EQ(FilteredTelephoneNumber("()-. "), "");
    EXPECT_EQ(FilteredTelephoneNumber("٣²5"), "5");
}

// --- The field -----------------------------------------------------------------------------------------------------

class PhoneNumberField : public testing::Test {
protected:
    PhoneNumberField()
    {
        field.show();
        field.setFocus();
    }

    PhoneNumberEdit field;
};

TEST_F(PhoneNumberField, TakesOnlyTheKeysOfANumber)
{
    QTest::keyClicks(&field, "+1 (555)a 12-3.4#*,w");
    EXPECT_EQ(field.text(), "1 (555) 12-3.4");
    QTest::keyClick(&field, Qt::Key_Backspace);
    EXPECT_EQ(field.text(), "1 (555) 12-3.");
}

TEST_F(PhoneNumberField, LeavesTheRestOfWhatIsPasted)
{
    field.setText("99");
    field.setCursorPosition(1);
    QGuiApplication::clipboard()->setText("Call +1\n555\t(AT) 12;34\\p ☎");
    field.paste();
    EXPECT_EQ(field.text(), "9 1555() 1234 9");
    EXPECT_EQ(field.cursorPosition(), 14);
}

TEST_F(PhoneNumberField, TakesNoEndlessNumber)
{
    QGuiApplication::clipboard()->setText(QString(100'000, '5'));
    field.paste();
    EXPECT_EQ(field.text().size(), PhoneNumberEdit::kLongest);
}

TEST_F(PhoneNumberField, OffersTheHistoryByTheKeyDown)
{
    field.setHistory({"555-0001", "911"});
    field.setText("99999");
    QTest::keyClick(&field, Qt::Key_Down);
    ASSERT_TRUE(field.completer()->popup()->isVisible());
    EXPECT_EQ(field.completer()->completionCount(), 2);
}

TEST_F(PhoneNumberField, OffersTheHistoryByItsArrow)
{
    field.setHistory({"555-0001"});
    field.actions().constFirst()->trigger();
    EXPECT_TRUE(field.completer()->popup()->isVisible());
}

TEST_F(PhoneNumberField, HasNoArrowWithoutAHistory)
{
    EXPECT_FALSE(field.actions().constFirst()->isVisible());
    QTest::keyClick(&field, Qt::Key_Down);
    EXPECT_FALSE(field.completer()->popup()->isVisible());
}

}  // namespace
}  // namespace fenrik
