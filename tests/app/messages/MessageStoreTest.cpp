#include "app/messages/MessageStore.h"

#include "Messages.h"
#include "support/Printers.h"

#include <gmock/gmock.h>

#include <map>
#include <random>

namespace fenrik {

inline void PrintTo(const MessageStore::Change& change, std::ostream* out)
{
    *out << change.first << "-" << change.last << " columns " << int(change.columns);
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Change = MessageStore::Change;

constexpr std::uint8_t kMessage = 1, kState = 2, kData = 8, kCheckSum = 16, kRaw = 32, kTime = 64, kCount = 128;

class MessageStoreTest : public testing::Test {
protected:
    void Put(const CMessage& message, const QString& name = QStringLiteral("Lamp"), int count = 0)
    {
        store.Put(message, store.Names().Intern(name, QStringLiteral("On"), name), std::int16_t(count));
    }

    MessageStore store;
};

TEST_F(MessageStoreTest, KeepsLinesInOrderOverManyChunks)
{
    constexpr int kLines = 600'000;
    for (int i = 0; i < kLines; ++i)
        Put(Received(12, i));
    ASSERT_EQ(store.Size(), unsigned(kLines));
    for (int i = 0; i < kLines; ++i)
        ASSERT_EQ(store[MessageStore::Row(i)].data, i);
}

TEST_F(MessageStoreTest, DoesNotMoveALineWhenItGrows)
{
    Put(Received(12, 1));
    const MessageRecord* const first = &store[0];
    for (int i = 0; i < 300'000; ++i)
        Put(Received(12, i));
    EXPECT_EQ(first, &store[0]);
}

TEST_F(MessageStoreTest, KeepsEachNameOnce)
{
    Put(Received(12));
    Put(Received(13));
    Put(Received(14), QStringLiteral("Horn"));
    EXPECT_EQ(store.Names().Size(), 2u);
    EXPECT_EQ(store[0].name, store[1].name);
}

TEST_F(MessageStoreTest, WithoutKeysGivesEachMessageALine)
{
    Put(Received(12));
    Put(Received(12));
    EXPECT_EQ(store.Size(), 2u);
    EXPECT_EQ(store.KeyText(0), QString());
}

TEST_F(MessageStoreTest, WithKeysGivesEachCommandALine)
{
    store.SetKeyed(true);
    Put(Received(12, 1));
    Put(Received(13, 2), QStringLiteral("Horn"));
    Put(Received(12, 3));
    ASSERT_EQ(store.Size(), 2u);
    EXPECT_EQ(store[0].data, 3);
    EXPECT_EQ(store.Newest(), 0u);
    EXPECT_EQ(store.KeyText(0), QStringLiteral("12VMLamp"));
    EXPECT_EQ(store.KeyText(1), QStringLiteral("13VMHorn"));
}

TEST_F(MessageStoreTest, WithKeysGivesARenamedCommandALineOfItsOwn)
{
    store.SetKeyed(true);
    Put(Received(12), QStringLiteral("Lamp"));
    Put(Received(12), QStringLiteral("Dome lamp"));
    EXPECT_EQ(store.Size(), 2u);
}

TEST_F(MessageStoreTest, KeyedByNameIgnoresTextAndIcon)
{
    store.SetKeyed(true);
    const auto put = [this](const QString& text, const QString& icon) {
        const auto name = store.Names().Intern(text, icon, QStringLiteral("Lamp"));
        store.Put(Received(12), name, 0);
    };
    put(QStringLiteral("Lamp (Node 1)"), QStringLiteral("Off"));
    put(QStringLiteral("Lamp (Node 2)"), QStringLiteral("On"));
    ASSERT_EQ(store.Size(), 1u);
    EXPECT_EQ(store.Names()[store[0].name].text, QStringLiteral("Lamp (Node 2)"));
    EXPECT_EQ(store.Names()[store[0].name].icon, QStringLiteral("On"));
    EXPECT_EQ(store.KeyText(0), QStringLiteral("12VMLamp"));
}

struct KeyRow {
    int command;
    unsigned linesForTwoData;
    const char* key;
};

class KeyRanges : public MessageStoreTest, public testing::WithParamInterface<KeyRow> {};

TEST_P(KeyRanges, DiagnosticCommandsAreKeyedByData)
{
    const auto [command, lines, key] = GetParam();
    store.SetKeyed(true);
    Put(Received(command, 5));
    Put(Received(command, 6));
    Put(Received(command, 5));
    EXPECT_EQ(store.Size(), lines);
    EXPECT_EQ(store.KeyText(0), QString::fromLatin1(key));
}

INSTANTIATE_TEST_SUITE_P(Store, KeyRanges,
                         testing::Values(KeyRow{1, 1, "1VMLamp"}, KeyRow{899, 1, "899VMLamp"}, KeyRow{900, 2, "900D5"},
                                         KeyRow{999, 2, "999D5"}, KeyRow{1000, 1, "1000VMLamp"},
                                         KeyRow{1279, 1, "1279VMLamp"}),
                         [](const auto& row) { return "Command" + std::to_string(row.param.command); });

TEST_F(MessageStoreTest, FindsEachOfManyKeysAgain)
{
    store.SetKeyed(true);
    std::mt19937 random(1);
    std::map<std::pair<int, int>, MessageStore::Row> rows;
    for (int i = 0; i < 60'000; ++i) {
        const int command = 900 + int(random() % 100);
        const int data = int(random() % 500) - 10;
        const auto row = rows.try_emplace({command, data}, MessageStore::Row(rows.size())).first->second;
        Put(Received(command, data));
        ASSERT_EQ(store.Newest(), row);
    }
    EXPECT_EQ(store.Size(), rows.size());
}

TEST_F(MessageStoreTest, TurningKeysOnEmptiesItAndTurningThemOffDoesNot)
{
    Put(Received(12));
    Put(Received(12));
    store.SetKeyed(true);
    EXPECT_EQ(store.Size(), 0u);

    Put(Received(12));
    store.SetKeyed(false);
    Put(Received(12));
    EXPECT_EQ(store.Size(), 2u);
    EXPECT_EQ(store.KeyText(0), QStringLiteral("12VMLamp"));
    EXPECT_EQ(store.KeyText(1), QString());
}

TEST_F(MessageStoreTest, ForgetsKeysWhenCleared)
{
    store.SetKeyed(true);
    Put(Received(13));
    Put(Received(12));
    store.Clear();
    Put(Received(12));
    EXPECT_EQ(store.Size(), 1u);
    EXPECT_EQ(store.Newest(), 0u);
}

class Changes : public MessageStoreTest {
protected:
    void SetUp() override
    {
        store.SetKeyed(true);
        for (int command = 10; command < 20; ++command)
            Put(Received(command));
        store.AnnounceAll();
    }
};

TEST_F(Changes, OfTheSameMessageAreNone)
{
    Put(Received(12));
    EXPECT_THAT(store.TakeChanges(), IsEmpty());
}

TEST_F(Changes, AreOnlyTheCellsThatDiffer)
{
    Put(Received(12), QStringLiteral("Lamp"), 1);
    EXPECT_THAT(store.TakeChanges(), ElementsAre(Change{2, 2, kCount}));

    CMessage later = Received(13);
    later.time = later.time.Plus(1);
    Put(later);
    EXPECT_THAT(store.TakeChanges(), ElementsAre(Change{3, 3, kTime}));

    Put(Received(14, 1));
    EXPECT_THAT(store.TakeChanges(), ElementsAre(Change{4, 4, kData | kCheckSum | kRaw}));

    Put(Received(15, 0, true));
    EXPECT_THAT(store.TakeChanges(), ElementsAre(Change{5, 5, kState | kCheckSum | kRaw}));

    Put(Sent(16));
    EXPECT_THAT(store.TakeChanges(), ElementsAre(Change{6, 6, kRaw | kTime}));
}

TEST_F(Changes, OfANewIconAreTheMessageColumn)
{
    const auto name = store.Names().Intern(QStringLiteral("Lamp"), QStringLiteral("Analog"), QStringLiteral("Lamp"));
    store.Put(Received(12), name, 0);
    EXPECT_THAT(store.TakeChanges(), ElementsAre(Change{2, 2, kMessage}));
}

TEST_F(Changes, OfNeighboursAreOneRange)
{
    for (const int command : {14, 12, 13, 17, 12})
        Put(Received(command), QStringLiteral("Lamp"), 1);
    EXPECT_THAT(store.TakeChanges(), ElementsAre(Change{2, 4, kCount}, Change{7, 7, kCount}));
}

TEST_F(Changes, AddUpUntilTheyAreTaken)
{
    Put(Received(12), QStringLiteral("Lamp"), 1);
    Put(Received(12, 1), QStringLiteral("Lamp"), 1);
    EXPECT_THAT(store.TakeChanges(), ElementsAre(Change{2, 2, kData | kCheckSum | kRaw | kCount}));
    EXPECT_THAT(store.TakeChanges(), IsEmpty());
}

TEST_F(Changes, OfLinesThatNobodyKnowsYetAreNone)
{
    Put(Received(30));
    Put(Received(30, 5));
    EXPECT_THAT(store.TakeChanges(), IsEmpty());
    EXPECT_EQ(store[10].data, 5);
}

TEST_F(Changes, AreForgottenWhenCleared)
{
    Put(Received(12, 5));
    store.Clear();
    EXPECT_THAT(store.TakeChanges(), IsEmpty());
}

}  // namespace
}  // namespace fenrik
