#include "e2e/HeldNode.h"

#include "model/CNode.h"

#include <QProcess>

#include <gtest/gtest.h>

namespace fenrik {

namespace {

QString Quoted(const QString& text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString Truth(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QString Number(Fixed4 value)
{
    return QString::number(value.ToDouble(), 'g', 12);
}

QString RoadName(const CNode& node)
{
    if (node.VFlashSupport())
        return QStringLiteral("flash");
    return node.iProtocol() == CNode::kProtocolImage ? QStringLiteral("memory") : QStringLiteral("query");
}

/// What the view of the flash shows is read there and not by a download.
bool IsOfTheHeader(const QString& key)
{
    return key.startsWith(QLatin1String("header ")) || key.startsWith(QLatin1String("version "));
}

void DescribeInput(const CDigitalInput& input, NodeFields& held)
{
    const QString key = QStringLiteral("input %1 ").arg(input.number());
    held[key + "name"] = Quoted(input.Name());
    held[key + "command"] = QString::number(input.InCommand());
    held[key + "switch-type"] = QString::number(input.SwitchType());
    held[key + "on-state"] = QString::number(input.OnState());
    held[key + "three-way"] = QString::number(input.ThreeWay());
    held[key + "name-ref"] = QString::number(input.NameRef());
    held[key + "comment-ref"] = QString::number(input.CommentRef());
    held[key + "on-list-ref"] = QString::number(input.OnExecuteRef());
    held[key + "off-list-ref"] = QString::number(input.OffExecuteRef());
    held[key + "off-delay"] = Number(input.OffDelay());
}

void DescribeOutput(const COutput& output, NodeFields& held)
{
    const QString key = QStringLiteral("output %1 ").arg(output.number());
    held[key + "name"] = Quoted(output.Name());
    held[key + "usage"] = QString::number(output.UsageCode());
    held[key + "relationship"] = Quoted(QString::fromLatin1(output.RPN().toHex().toUpper()));
    held[key + "levels"] = QString::number(output.RLevelCount());
    held[key + "permanently-on"] = Truth(output.PermOn());
    held[key + "flashing"] = Truth(output.Flashing());
    held[key + "load-shed"] = Number(output.Loadshed());
    held[key + "pwm"] = QString::number(output.PWMValue());
    held[key + "delay-on"] = Number(output.DelayOn());
    held[key + "delay-off"] = Number(output.DelayOff());
    held[key + "sequence"] = QString::number(output.Sequence());
    held[key + "name-ref"] = QString::number(output.NameRef());
    held[key + "comment-ref"] = QString::number(output.CommentRef());
    held[key + "fault-detect"] = QString::number(output.FaultDetectType());
}

}  // namespace

NodeFields HeldNode(const CNode& node)
{
    NodeFields held;
    held["road"] = RoadName(node);
    held["type"] = QString::number(node.typeID());
    held["name"] = Quoted(node.Name());
    held["inputs"] = QString::number(node.Inputs());
    held["outputs"] = QString::number(node.Outputs());
    for (int number = 1; number <= node.CDigitalInputs().Count(); ++number)
        DescribeInput(*node.CDigitalInputs().Find(number), held);
    for (int number = 1; number <= node.COutputs().Count(); ++number)
        DescribeOutput(*node.COutputs().Find(number), held);
    return held;
}

NodeFields DescribedNode(const QString& scenario, int number, const QStringList& more)
{
    QProcess describe;
    describe.start(QStringLiteral(FENRIK_BIN_FOLDER "/fenrik-vehicle"),
                   QStringList{"--describe", "--scenario", scenario} + more);
    EXPECT_TRUE(describe.waitForFinished());
    NodeFields fields;
    const QString head = QStringLiteral("node %1 ").arg(number);
    for (const QString& line : QString::fromUtf8(describe.readAllStandardOutput()).split(QLatin1Char('\n'))) {
        if (!line.startsWith(head))
            continue;
        const QString field = line.mid(head.size());
        const auto quote = field.indexOf(QLatin1String(" \""));
        const auto split = quote >= 0 ? quote : field.lastIndexOf(QLatin1Char(' '));
        fields.insert(field.left(split), field.mid(split + 1));
    }
    return fields;
}

int DescribedNodeOf(const QString& scenario, int last, const char* type, const char* road)
{
    for (int number = 1; number <= last; ++number) {
        const NodeFields fields = DescribedNode(scenario, number);
        if (fields["type"] == QLatin1String(type) && fields["road"] == QLatin1String(road))
            return number;
    }
    ADD_FAILURE() << "no node of type " << type << " and road " << road;
    return 1;
}

void ExpectAsDescribed(const CNode& node, const NodeFields& described)
{
    const NodeFields held = HeldNode(node);
    ASSERT_GT(described.size(), 3);
    for (auto field = described.begin(); field != described.end(); ++field) {
        if (!IsOfTheHeader(field.key())) {
            EXPECT_EQ(held.value(field.key()), field.value())
                << "node " << int(node.number()) << ' ' << field.key().toStdString();
        }
    }
}

}  // namespace fenrik
