// Makes the sample system: what the tool would save after it has read every node of the simulated vehicle.
//
//     make-sample VEHICLE SCENARIO NCCOMMAND TARGET
//
// VEHICLE is the simulator, which tells what its nodes hold.

#include "model/CNode.h"
#include "model/CSystem.h"
#include "model/SystemDatabase.h"
#include "shared/Settings.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

#include <algorithm>
#include <iostream>
#include <stdexcept>

namespace {

using namespace fenrik;

QString Describe(const QString& vehicle, const QString& scenario)
{
    QProcess process;
    process.start(vehicle, {QStringLiteral("--describe"), QStringLiteral("--scenario"), scenario});
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        throw std::runtime_error("the vehicle does not tell its nodes: " +
                                 process.readAllStandardError().toStdString());
    return QString::fromUtf8(process.readAllStandardOutput());
}

QString ReadText(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("can't be read: " + path.toStdString());
    return QString::fromUtf8(file.readAll());
}

/// Makes the nodes with their types. A model that tells no more than its type stands in no description.
void TakeTypes(CSystem& system, const QString& scenario)
{
    static const QRegularExpression kNode(QStringLiteral("^node (\\d+) type (\\d+)"),
                                          QRegularExpression::MultilineOption);
    for (auto nodes = kNode.globalMatch(scenario); nodes.hasNext();) {
        const auto node = nodes.next();
        const auto number = std::int16_t(node.captured(1).toInt());
        system.setNodesInSystem(std::max(number, system.NodesInSystem()));
        system.Node(number)->setTypeID(std::int16_t(node.captured(2).toInt()));
    }
}

void TakeOsVersion(CNode& node, const QString& version)
{
    const QStringList parts = version.split(QLatin1Char('.'));
    node.setOsMajVersion(parts.size() > 1 ? std::uint8_t(parts[0].toInt()) : std::uint8_t(0));
    node.setOsMinVersion(std::uint8_t(parts.last().toInt()));
}

void TakeInput(CDigitalInput& input, const QString& field, const QString& value)
{
    if (field == QLatin1String("name"))
        input.setName(value);
    else if (field == QLatin1String("on-state"))
        input.setOnState(value.toShort());
}

void TakeOutput(COutput& output, const QString& field, const QString& value)
{
    if (field == QLatin1String("name"))
        output.setName(value);
    else if (field == QLatin1String("usage"))
        output.setUsageCode(value.toInt());
    else if (field == QLatin1String("relationship"))
        output.setRPN(QByteArray::fromHex(value.toLatin1()));
}

void TakeNodeField(CNode& node, const QString& field, const QString& value)
{
    // A model that can't be read has a name too, but the tool has no way to learn it.
    if (field == QLatin1String("name") && node.Refreshable())
        node.setName(value);
    else if (field == QLatin1String("version os"))
        TakeOsVersion(node, value);
}

/// Takes one line of a description; most fields stand in no saved system and are passed over.
void TakeLine(CSystem& system, const QString& line)
{
    static const QRegularExpression kLine(
        QStringLiteral("^node (\\d+) (?:(input|output) (\\d+) )?((?:version )?[a-z-]+) \"?(.*?)\"?$"));
    const auto parts = kLine.match(line);
    CNode* node = system.Node(parts.captured(1).toInt());
    if (!node)
        throw std::runtime_error("not understood: " + line.toStdString());
    const QString field = parts.captured(4);
    const QString value = parts.captured(5);
    const int point = parts.captured(3).toInt();
    if (parts.captured(2) == QLatin1String("input"))
        TakeInput(node->CDigitalInputs()[point], field, value);
    else if (parts.captured(2) == QLatin1String("output"))
        TakeOutput(node->COutputs()[point], field, value);
    else
        TakeNodeField(*node, field, value);
}

void MakeSample(const QString& vehicle, const QString& scenario, const QString& defaultDatabase, const QString& target)
{
    Settings settings;
    CSystem system(settings, QFileInfo(target).path());
    TakeTypes(system, ReadText(scenario));
    const QStringList lines = Describe(vehicle, scenario).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (system.NodesInSystem() == 0 || lines.isEmpty())
        throw std::runtime_error("the vehicle has no nodes");
    for (const QString& line : lines)
        TakeLine(system, line);
    if (!SystemDatabase(system, nullptr).Make(target, defaultDatabase))
        throw std::runtime_error("the sample system can't be written");
}

}  // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5) {
        std::cerr << "usage: make-sample VEHICLE SCENARIO NCCOMMAND TARGET\n";
        return EXIT_FAILURE;
    }
    try {
        MakeSample(arguments[1], arguments[2], arguments[3], arguments[4]);
        return EXIT_SUCCESS;
    } catch (const std::exception& failure) {
        std::cerr << "make-sample: " << failure.what() << "\n";
        return EXIT_FAILURE;
    }
}
