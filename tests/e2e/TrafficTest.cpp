// What the vehicle says, in the list and in the log, and what the tool says to it.

#include "e2e/ToolTest.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace fenrik {
namespace {

using testing::EndsWith;
using testing::StartsWith;

struct Sent {
    const char* statement;
    const char* name;
    const char* icon;
};

constexpr Sent kSent[] = {
    {"send 1 on false 100", "Head Lamps Low Beam", "On"},
    {"send 8 off", "Hazard Flashers", "Off"},
    {"send 13 on true 65535", "Daytime Running Lamps", "On"},
    {"send 31 off true 12", "Dome Lamps Front", "Off"},
    {"send 59 on false 1", "Front Door Is Open", "On"},
    {"send 93 off false 256", "Wiper Intermittent", "Off"},
    {"send 105 on", "Driver Blower Low", "On"},
    {"send 277 on false 32768", "Electric Horn", "On"},
    {"send 922 off false 4660", "Output States", "Command"},
    {"send 983 on false 261", "Output Fault Report", "Command"},
    {"send 1001 on true 2", "Network Awake", "On"},
    // Commands that carry more than their number says.
    {"send 960 on false 1281", "Restart Node (Node 5)", "Node"},
    {"send 960 on false 15361", "Restart Node (Node 60 - Unknown)", "Node"},
    {"send 962 on false 513", "Now: Node Sleep (Node 2)", "Sleep"},
    {"send 966 off false 4096", "Low- Panel Brightness", "Panel"},
    {"send 966 on false 8192", "Enable- Panel Key Click", "On"},
    {"send 1000 off false 2314", "Panel 3 Indicators", "Command"},
};

/// The bytes of a received frame as the list shows them: "00 AE" is "0.AE".
QString ReceivedRaw(const QString& bytes)
{
    QStringList raw;
    for (const QString& byte : bytes.split(QLatin1Char(' ')))
        raw.append(QString::number(byte.toInt(nullptr, 16), 16).toUpper());
    return raw.join(QLatin1Char('.'));
}

std::string ExpectedLine(const Sent& sent, const VehicleProcess::Entry& entry)
{
    return QStringList{QLatin1String(sent.name),
                       entry.Field("state") ? QStringLiteral("On") : QStringLiteral("Off"),
                       entry.Field("ext") ? QStringLiteral("True") : QStringLiteral("False"),
                       QString::number(entry.Field("data")),
                       ReceivedRaw(entry.bytes),
                       QLatin1String(sent.icon)}
        .join(QLatin1Char('|'))
        .toStdString();
}

class Traffic : public ToolTest {
protected:
    /// Chooses a command in the composer and sends it.
    void Send(const char* category, const char* command, bool state, bool extended, const char* data)
    {
        Find<QComboBox>("CboCategory").setCurrentText(QLatin1String(category));
        Find<QComboBox>("CboCommand").setCurrentText(QLatin1String(command));
        Press("cmdState", state ? "On" : "Off");
        Press("cmdExtended", extended ? "True" : "False");
        auto& text = Find<QLineEdit>("TxtData");
        text.clear();
        QTest::keyClicks(&text, QLatin1String(data));
        QTest::mouseClick(&Find<QPushButton>("cmdSend"), Qt::LeftButton);
    }

    /// The last thing that the vehicle heard.
    [[nodiscard]] VehicleProcess::Entry LastHeard() const
    {
        VehicleProcess::Entry last;
        for (const auto& entry : vehicle.Log()) {
            if (entry.what == QLatin1String("RX"))
                last = entry;
        }
        return last;
    }

    /// The frames that the vehicle has sent, as they stand in its log.
    [[nodiscard]] std::vector<VehicleProcess::Entry> SentByVehicle() const
    {
        auto entries = vehicle.Log();
        std::erase_if(entries, [](const auto& entry) { return entry.what != QLatin1String("TX"); });
        return entries;
    }

private:
    void Press(const char* button, const char* caption)
    {
        auto& found = Find<QPushButton>(button);
        if (found.text() != QLatin1String(caption))
            QTest::mouseClick(&found, Qt::LeftButton);
        EXPECT_EQ(found.text(), QLatin1String(caption));
    }
};

TEST_F(Traffic, IsListedByNameWithWhatTheVehicleSent)
{
    ASSERT_NO_FATAL_FAILURE(StartConnected());
    const int first = LineCount();
    const auto before = SentByVehicle().size();
    for (const Sent& sent : kSent)
        ASSERT_NO_FATAL_FAILURE(vehicle.Control(sent.statement));
    ASSERT_TRUE(Eventually([&] { return LineCount() == first + int(std::size(kSent)); })) << LineCount();

    const auto entries = SentByVehicle();
    ASSERT_EQ(entries.size(), before + std::size(kSent));
    for (std::size_t i = 0; i < std::size(kSent); ++i)
        EXPECT_EQ(Line(first + int(i)), ExpectedLine(kSent[i], entries[before + i]));
}

TEST_F(Traffic, IsLoggedAsItIsListed)
{
    ASSERT_NO_FATAL_FAILURE(StartConnected());
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("send 59 on false 100"));
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("send 277 off true 7"));
    const int listed = 2 * 8 + 2;  // pings, their answers, and the two
    ASSERT_TRUE(Eventually([&] { return LineCount() == listed; }));

    const QStringList logged = copy.LoggedLines();
    ASSERT_EQ(logged.size(), listed);
    EXPECT_THAT(logged[0].toStdString(), StartsWith("Ping "));
    EXPECT_THAT(logged[1].toStdString(), StartsWith("Ping Reply "));
    EXPECT_THAT(logged[16].left(79).trimmed().toStdString(),
                testing::MatchesRegex("Front Door Is Open +100 +1 +0 +242 +0.A0.EE.0.64.F2"));
    EXPECT_THAT(logged[17].left(79).trimmed().toStdString(),
                testing::MatchesRegex("Electric Horn +7 +0 +1 +0 +0.A4.55.0.7.0"));
}

TEST_F(Traffic, FromTheComposerReachesTheVehicleAndIsEchoed)
{
    ASSERT_NO_FATAL_FAILURE(StartConnected());
    Send("Doors and Ramp", "Front Door Is Open", true, true, "100");
    ASSERT_TRUE(Eventually([this] { return LastHeard().bytes == QLatin1String("00 A0 EF 00 64 F3"); }))
        << LastHeard().bytes.toStdString();
    EXPECT_EQ(Line(LineCount() - 1), "Front Door Is Open|On|True|100|00.A0.EF.00.64.F3|On");

    Send("Doors and Ramp", "Front Door Is Open", false, false, "0x1F");
    ASSERT_TRUE(Eventually([this] { return LastHeard().meaning == QLatin1String("59 state=0 ext=0 data=31"); }));
    EXPECT_EQ(Line(LineCount() - 1), "Front Door Is Open|Off|False|31|00.A0.EC.00.1F.AB|Off");
}

TEST_F(Traffic, FromTheComposerCarriesASubCommandInItsDataWhateverWasTyped)
{
    ASSERT_NO_FATAL_FAILURE(StartConnected());
    Send("Switch Panels", "Panel 3 Chime", false, false, "77");
    ASSERT_TRUE(Eventually([this] { return LastHeard().meaning == QLatin1String("1000 state=0 ext=0 data=2560"); }))
        << LastHeard().meaning.toStdString();
    EXPECT_THAT(Line(LineCount() - 1), StartsWith("Panel 3 Chime|Off|False|2560|"));
    EXPECT_THAT(Line(LineCount() - 1), EndsWith("|Command"));
}

TEST_F(Traffic, OfABurstIsListedAndLoggedWholeAndInOrder)
{
    constexpr int kFrames = 2000;
    ASSERT_NO_FATAL_FAILURE(StartConnected());
    const int first = LineCount();
    ASSERT_NO_FATAL_FAILURE(vehicle.Control("burst 2000 of frames"));
    ASSERT_TRUE(Eventually([&] { return LineCount() >= first + kFrames; })) << LineCount() - first;

    // The data of a burst counts up from 0.
    ASSERT_EQ(LineCount(), first + kFrames);
    const QStringList logged = copy.LoggedLines();
    ASSERT_EQ(logged.size(), first + kFrames);
    for (int i = 0; i < kFrames; ++i) {
        ASSERT_EQ(QString::fromStdString(Line(first + i)).section(QLatin1Char('|'), 3, 3), QString::number(i));
        ASSERT_EQ(logged[first + i].mid(27, 5).trimmed(), QString::number(i));
    }
    EXPECT_THAT(Face("PicMiscFace"), testing::HasSubstr("PC 00000"));
}

}  // namespace
}  // namespace fenrik
