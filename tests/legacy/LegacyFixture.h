#pragma once

#include "diagnostics/FaceFixture.h"
#include "diagnostics/Graphics.h"
#include "legacy/MAF98.h"
#include "legacy/Marks98.h"
#include "legacy/MessageList98.h"
#include "legacy/Monitor98.h"
#include "legacy/Traffic98.h"
#include "logging/EventTrigger.h"
#include "logging/MsgLogging.h"
#include "platform/SerialControl.h"
#include "platform/VersionInfo.h"
#include "shared/CommandTable.h"
#include "shared/RunState.h"
#include "shared/Settings.h"
#include "support/ErrorRecorder.h"
#include "support/FakeClock.h"
#include "support/PortFolder.h"
#include "support/PseudoTerminal.h"

#include <QFile>
#include <QTemporaryDir>

#include <optional>
#include <string>
#include <vector>

namespace fenrik {

/// The lines of a list, as "3|Horn|30|Body|32707.25|Command".
inline std::vector<std::string> LinesOf(MessageList98& list)
{
    list.Flush();
    std::vector<std::string> lines;
    for (int row = 0; row < list.rowCount(); ++row) {
        QStringList fields;
        for (int column = 0; column < list.columnCount(); ++column)
            fields.append(list.index(row, column).data().toString());
        fields.append(list.index(row, 0).data(MessageList98::IconRole).toString());
        lines.push_back(fields.join(QLatin1Char('|')).toStdString());
    }
    return lines;
}

/// Both panels with what draws on them.
class PanelTest : public FaceFixture {
protected:
    [[nodiscard]] std::string Misc(int row) const { return Row(miscFace, row).toStdString(); }
    [[nodiscard]] std::string DimMisc(int row) const { return DimRow(miscFace, row).toStdString(); }
    [[nodiscard]] std::string Analog(int row) const { return Row(analogFace, row).toStdString(); }
    [[nodiscard]] bool AnalogIsBlank() const { return analogFace.Text().trimmed().isEmpty(); }

    MessageTable98 messages;
    CharacterFace miscFace{sheets, QSize(148, 702), 8};
    CharacterFace analogFace{sheets, QSize(672, 740), Graphics::kColumns};
    Graphics graphics{analogFace};
    MAF98 panels{miscFace, graphics, messages};
};

/// Everything behind the port, with a table of a few messages and a clock that stands at 32707.25.
class MonitorTest : public PanelTest, public EventTriggerHost {
protected:
    MonitorTest()
    {
        run.DiagLogPath = dir.path();
        log.NewFileName();
        messages[10] = {"Horn", "Body", false, 1};
        messages[11] = {"Quiet", "Body", true, 1};
        messages[50] = {"Voltage", "Analog", false, 10};
        messages[51] = {"Pressure", "ANALOG", false, 1};
        messages[52] = {"Hidden", "Analog", true, 1};
        messages[70] = {"Load Shed 3 ON", "LoadShed", false, 1};
        messages[71] = {"Load Shed 3 OFF", "loadshed", true, 1};
        monitor.Start();
    }

    void AddInfoRow(const QString& text) override { traffic.Info(text); }
    void ShowDisconnected() override
    {
        ++disconnects;
        monitor.Stop();
    }
    void ClosePort() override { ++closes; }

    void Hear(const std::vector<int>& bytes)
    {
        QByteArray text;
        for (const int byte : bytes)
            text.append(char(byte));
        monitor.ProcessCommData(text);
    }

    void RecordEvents(int number)
    {
        settings.LoggingOn = true;
        settings.LoggingBuffered = true;
        settings.LoggingBufferMax = 25;
        settings.LoggingEventTrigger = number;
    }

    [[nodiscard]] std::vector<std::string> Lines() { return LinesOf(list); }

    /// The lines of the log, by their first four columns, as "3|Horn|30|Body".
    [[nodiscard]] std::vector<std::string> Logged() const
    {
        QFile file(log.Path());
        std::vector<std::string> lines;
        if (!file.open(QIODevice::ReadOnly))
            return lines;
        for (const QByteArray& line : file.readAll().split('\n')) {
            if (!line.isEmpty())
                lines.push_back(QByteArrayList{line.mid(0, 10).trimmed(), line.mid(10, 35).trimmed(),
                                               line.mid(45, 10).trimmed(), line.mid(55, 20).trimmed()}
                                    .join('|')
                                    .toStdString());
        }
        return lines;
    }

    QTimer& Timer(const char* name) { return *marks.findChild<QTimer*>(QLatin1String(name)); }

    QTemporaryDir dir;
    FakeClock clock;
    ErrorRecorder errors;
    Settings settings;
    RunState run;
    CommandTable commands;
    VersionInfo version{1, 0, 7, QString()};
    MsgLogging log{run, settings, commands, clock, version};
    MessageList98 list;
    Marks98 marks{panels};
    Traffic98 traffic{list, log, settings, clock, errors};
    EventTrigger trigger{settings, log, errors, *this};
    PseudoTerminal terminal;
    PortFolder portFolder;
    ComPorts ports = portFolder.Ports();
    std::optional<std::uint32_t> framingErrors = 0;  // what the driver's counter says
    SerialControl port{ports, nullptr, [this](int) { return framingErrors; }};
    Monitor98 monitor{{port, messages, settings, panels, marks, traffic, trigger, errors}};
    int disconnects = 0;
    int closes = 0;
};

}  // namespace fenrik
