#pragma once

#include "link/CMessage.h"
#include "logging/MsgLogging.h"
#include "platform/VersionInfo.h"
#include "shared/CommandTable.h"
#include "shared/RunState.h"
#include "shared/Settings.h"
#include "support/ErrorRecorder.h"
#include "support/FakeClock.h"
#include "support/Printers.h"

#include <QFile>
#include <QLocale>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace fenrik {

/// A log in a folder of the test's own, whose name and times stand still, in plain American dates.
class LogTest : public testing::Test {
protected:
    LogTest()
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        run.DiagLogPath = dir.path();
        settings.LoggingOn = true;
        settings.LoggingUnique = true;
        settings.LoggingBufferMax = 25;
        commands[12].Name = "Rear Fog Lamps";
        log.NewFileName();
    }
    ~LogTest() override { QLocale::setDefault(QLocale::system()); }

    [[nodiscard]] QByteArray Text() const
    {
        QFile file(log.Path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// The lines, without the empty text behind the last line end.
    [[nodiscard]] QList<QByteArray> Lines() const
    {
        QList<QByteArray> lines;
        for (const QByteArray& line : Text().split('\n'))
            lines.append(line.chopped(line.endsWith('\r') ? 1 : 0));
        lines.removeLast();
        return lines;
    }

    [[nodiscard]] CMessage Message(int command, int data) const
    {
        CMessage message;
        message.Command = command;
        message.data = data;
        message.rawBytes = Frame{std::uint16_t(command), false, false, std::uint16_t(data)}.Encode();
        message.CheckSum = message.rawBytes.back();
        message.rawForm = CMessage::RawForm::Received;
        message.time = clock.Now();
        return message;
    }

    QTemporaryDir dir;
    FakeClock clock;
    RunState run;
    Settings settings;
    CommandTable commands;
    ErrorRecorder errors;
    VersionInfo version{1, 0, 7, QString()};
    MsgLogging log{run, settings, commands, clock, version};
};

}  // namespace fenrik
