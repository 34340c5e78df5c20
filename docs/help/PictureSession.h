#pragma once

#include "app/MMain.h"

#include <QDir>
#include <QMessageBox>
#include <QProcess>
#include <QTimer>
#include <QtCore/qtestsupport_core.h>
#include <QtWidgets/qtestsupport_widgets.h>

#include <functional>
#include <memory>
#include <optional>

namespace fenrik {

/// The program in this process with a profile of its own on the simulated vehicle, worked by the names of its controls,
/// and pictures of its windows. Throws std::runtime_error where something is not as it should be.
class PictureSession {
public:
    enum class Network { Fenrik2000, Fenrik98 };
    using Work = std::function<void(QWidget&)>;

    /// `bin` holds the programs and the databases, pictures go to `pictures`.
    PictureSession(const QString& bin, const QString& pictures, Network network);
    ~PictureSession();

    /// The vehicle on COM5, with these statements.
    void StartVehicle(const char* scenario);
    /// A relay with the user Bob on it, to whose vehicle the profile of the session leads.
    void StartRelay();
    /// One statement for the vehicle on COM5.
    void Control(const char* statement);

    void StartTool();
    void CloseTool();

    void ClickTool(const char* key) { Trigger("Toolbar", key); }
    void ClickNode(const char* key) { Trigger("Nodebar", key); }
    void Choose(const char* entry);
    void Wait(int milliseconds) const { QTest::qWait(milliseconds); }

    /// From now on, message boxes are answered with this button, or with their default one.
    void AnswerBoxes(QMessageBox::StandardButton answer) { mAnswer = answer; }

    void Take(const char* name);
    void TakeViewArea(const char* name) { TakeArea(name, 0); }
    void TakeMessageArea(const char* name) { TakeArea(name, 1); }

    /// Takes the window of that object name that `open` opens, after `prepare`; `close` ends it.
    void TakeDialog(const char* name, const char* window, const std::function<void()>& open,
                    const Work& prepare = nullptr, const Work& close = nullptr);

    template <typename Widget>
    [[nodiscard]] Widget& Find(const char* name) const
    {
        auto* widget = mProgram->MainWindow()->findChild<Widget*>(QLatin1String(name));
        Require(widget, name);
        return *widget;
    }

private:
    static void Require(bool holds, const QString& what);
    void Trigger(const char* bar, const char* key);
    void TakeArea(const char* name, int part);
    void Save(const char* name, QWidget& window, const QString& title) const;
    void AnswerBox();
    void Start(QProcess& process, const QString& program, const QStringList& arguments);
    void WriteSettings();
    void WriteProfile(int port);

    QString mBin;
    QString mPictures;
    Network mNetwork;
    QDir mFolder{QStringLiteral("/tmp/Fenrik Diagnostics")};
    QProcess mVehicle;
    QProcess mRelay;
    QProcess mColleague;
    QTimer mBoxes;
    QMessageBox::StandardButton mAnswer = QMessageBox::NoButton;
    std::unique_ptr<MMain> mProgram;
};

}  // namespace fenrik
