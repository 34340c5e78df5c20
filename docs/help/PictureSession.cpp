#include "PictureSession.h"

#include "platform/RegistryStore.h"
#include "platform/VersionInfo.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QSplitter>
#include <QToolBar>

#include <stdexcept>

namespace fenrik {

namespace {

constexpr int kPatienceMs = 20'000;
constexpr int kSettleMs = 400;
constexpr int kTitleHeight = 28;
constexpr QSize kWindowSize(1000, 720);  // letters stay readable on a printed page
const QColor kTitleColor(0x2b, 0x3a, 0x4a);

/// The windows of this platform have no frames: one is drawn, with the title.
QImage WithTitle(const QPixmap& content, const QString& title)
{
    QImage image(content.width() + 2, content.height() + kTitleHeight + 1, QImage::Format_RGB32);
    image.fill(kTitleColor);
    QPainter painter(&image);
    painter.drawPixmap(1, kTitleHeight, content);
    QFont font = QApplication::font();
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRect(0, 0, image.width(), kTitleHeight), Qt::AlignCenter, title);
    return image;
}

QWidget* ShownWindow(const char* name)
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == QLatin1String(name) && window->isVisible())
            return window;
    }
    return nullptr;
}

}  // namespace

PictureSession::PictureSession(const QString& bin, const QString& pictures, Network network)
    : mBin(bin), mPictures(pictures), mNetwork(network)
{
    // Paths show in some windows: this one tells nothing about the machine. It goes with the session.
    Require(!QFile::exists(mFolder.path()), mFolder.path() + QStringLiteral(" is free"));
    for (const char* folder : {"bin", "config/fenrik-diagnostics", "runtime"})
        QDir().mkpath(mFolder.filePath(QLatin1String(folder)));
    for (const char* file : {"ncCommand.dav", "SpecialCommands.dav", "fxmaps.dav", "Sample Bus.dav"})
        QFile::copy(mBin + QLatin1Char('/') + QLatin1String(file),
                    mFolder.filePath(QStringLiteral("bin/") + QLatin1String(file)));
    WriteSettings();
    QObject::connect(&mBoxes, &QTimer::timeout, qApp, [this] { AnswerBox(); });
    mBoxes.start(kSettleMs);
}

PictureSession::~PictureSession()
{
    mProgram.reset();
    mBoxes.stop();
    for (QProcess* process : {&mColleague, &mRelay, &mVehicle}) {
        process->terminate();
        process->waitForFinished(kPatienceMs);
    }
    mFolder.removeRecursively();
}

void PictureSession::Require(bool holds, const QString& what)
{
    if (!holds)
        throw std::runtime_error("not so: " + what.toStdString());
}

void PictureSession::WriteSettings()
{
    QFile settings(mFolder.filePath(QStringLiteral("config/fenrik-diagnostics/settings.ini")));
    Require(settings.open(QIODevice::WriteOnly), settings.fileName());
    settings.write("[Settings]\nCommPort=5\nFirstRun=False\nRDEnable=True\nRDRecentProfileKey={DEPOT}\n");
    if (mNetwork == Network::Fenrik98) {
        settings.write(
            "Protocol=Fenrik 98\n[Database]\nName=Demonstration Bus 98.dav\nSystemName=Demonstration Bus 98\n"
            "Created=2026-03-02\nBy=Harnwick\n");
        settings.write(QStringLiteral("Path=%1/legacy\n").arg(mBin).toUtf8());
    }
}

void PictureSession::WriteProfile(int port)
{
    RegistryStore registry(mFolder.filePath(QStringLiteral("config/fenrik-diagnostics/registry.ini")));
    const QString key = QStringLiteral("Software\\Harnwick Technologies\\RemoteServer\\Profiles\\{DEPOT}");
    registry.CreateKey(key);
    registry.WriteValue(key, QStringLiteral("UserName"), QStringLiteral("Ada"));
    registry.WriteValue(key, QStringLiteral("LogonID"), QStringLiteral("ada"));
    registry.WriteValue(key, QStringLiteral("ServerName"), QStringLiteral("127.0.0.1"));
    registry.WriteValue(key, QStringLiteral("ServerPort"), port);
}

void PictureSession::Start(QProcess& process, const QString& program, const QStringList& arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), mFolder.filePath(QStringLiteral("config")));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(mBin + QLatin1Char('/') + program, arguments);
    Require(process.waitForStarted(kPatienceMs), program);
    while (!process.canReadLine())
        Require(process.waitForReadyRead(kPatienceMs), program + QStringLiteral(" is ready"));
}

void PictureSession::StartVehicle(const char* scenario)
{
    const QString path = mFolder.filePath(QStringLiteral("scenario.txt"));
    QFile file(path);
    Require(file.open(QIODevice::WriteOnly), path);
    file.write(scenario);
    file.close();
    QStringList arguments{QStringLiteral("--port"), QStringLiteral("5"), QStringLiteral("--control")};
    if (mNetwork == Network::Fenrik98)
        arguments << QStringLiteral("--legacy") << QStringLiteral("--pace");
    else
        arguments << QStringLiteral("--scenario") << path;
    Start(mVehicle, QStringLiteral("fenrik-vehicle"), arguments);
}

void PictureSession::StartRelay()
{
    Start(mRelay, QStringLiteral("fenrik-relay"),
          {QStringLiteral("--listen"), QStringLiteral("127.0.0.1:48051"), QStringLiteral("--consent"),
           QStringLiteral("ask")});
    Start(mColleague, QStringLiteral("fenrik-vehicle"),
          {QStringLiteral("--relay"), QStringLiteral("127.0.0.1:48051"), QStringLiteral("--name"),
           QStringLiteral("Bob"), QStringLiteral("--grant")});
}

void PictureSession::Control(const char* statement)
{
    mVehicle.write(QByteArray(statement) + '\n');
}

void PictureSession::StartTool()
{
    WriteProfile(48051);
    const QString folder = mFolder.filePath(QStringLiteral("bin"));
    mProgram = std::make_unique<MMain>(MMain::Environment{ProgramFolder(folder, folder, folder),
                                                          mFolder.filePath(QStringLiteral("config/fenrik-diagnostics")),
                                                          VersionInfo(1, 0, 1, {})});
    Require(mProgram->Main(), QStringLiteral("the tool starts"));
    mProgram->MainWindow()->resize(kWindowSize);
    Require(QTest::qWaitForWindowExposed(mProgram->MainWindow(), kPatienceMs), QStringLiteral("the window shows"));
}

void PictureSession::CloseTool()
{
    AnswerBoxes(QMessageBox::No);
    mProgram->MainWindow()->close();
    mProgram.reset();
}

void PictureSession::Trigger(const char* bar, const char* key)
{
    auto* action = Find<QToolBar>(bar).findChild<QAction*>(QLatin1String(key));
    Require(action && action->isEnabled(), QLatin1String(key) + QStringLiteral(" is enabled"));
    action->trigger();
    Wait(kSettleMs);
}

void PictureSession::Choose(const char* entry)
{
    auto& action = Find<QAction>(entry);
    Require(action.isEnabled(), QLatin1String(entry) + QStringLiteral(" is enabled"));
    action.trigger();
    Wait(kSettleMs);
}

void PictureSession::AnswerBox()
{
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box)
        return;
    std::fprintf(stderr, "box: %s\n", qPrintable(box->text()));
    QAbstractButton* button = box->button(mAnswer);
    if (!button)
        button = box->buttons().constFirst();
    button->click();
}

void PictureSession::Save(const char* name, QWidget& window, const QString& title) const
{
    const QPixmap content = window.grab();
    const QImage image = title.isEmpty() ? content.toImage() : WithTitle(content, title);
    const QString path = QStringLiteral("%1/%2.png").arg(mPictures, QLatin1String(name));
    Require(image.convertToFormat(QImage::Format_RGB32).save(path, "PNG", 0), path);
    std::printf("%s\n", qPrintable(path));
}

void PictureSession::Take(const char* name)
{
    QWidget* window = mProgram->MainWindow();
    Save(name, *window, window->windowTitle());
}

void PictureSession::TakeArea(const char* name, int part)
{
    Save(name, *Find<QSplitter>("Splitter").widget(part), {});
}

void PictureSession::TakeDialog(const char* name, const char* window, const std::function<void()>& open,
                                const Work& prepare, const Work& close)
{
    bool taken = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        QPointer<QWidget> shown = ShownWindow(window);
        if (!shown)
            return;
        watch.stop();
        Wait(kSettleMs);
        if (prepare)
            prepare(*shown);
        Wait(kSettleMs);
        Save(name, *shown, shown->windowTitle());
        taken = true;
        if (close)
            close(*shown);
        else if (shown && qobject_cast<QDialog*>(shown.data()))
            qobject_cast<QDialog*>(shown.data())->reject();
        else if (shown)
            shown->close();
    });
    watch.start(50);
    open();
    for (int waited = 0; !taken && waited < kPatienceMs; waited += kSettleMs)
        Wait(kSettleMs);
    Require(taken, QLatin1String(window) + QStringLiteral(" shows"));
}

}  // namespace fenrik
