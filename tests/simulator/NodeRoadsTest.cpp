#include "simulator/ConfigMaker.h"
#include "simulator/ImageFiles.h"
#include "simulator/MemoryImage.h"
#include "simulator/NodeDescriber.h"
#include "simulator/RoadReader.h"

#include <QTemporaryDir>

#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <sstream>

namespace fenrik {
namespace {

using testing::IsEmpty;
using testing::SizeIs;
using Lines = RoadReader::Lines;

/// The default vehicle, and a node of each kind that it doesn't have.
std::vector<NodeSetup> AllNodes()
{
    auto nodes = Vehicle::DefaultNodes();
    for (auto [number, type] : {std::pair{9, 255}, {10, 2}, {11, 5}, {12, 0}, {13, 6}})
        nodes.push_back({.number = number, .type = type, .name = number == 10 ? "" : "Extra"});
    nodes[9].memoryOnly = true;
    nodes[10].memoryOnly = true;
    nodes[12].plainFlash = true;
    return nodes;
}

std::string Name(const NodeConfig& node)
{
    return "Node" + std::to_string(node.number) + "Type" + std::to_string(node.type);
}

/// Lines of the description that begin with one of `words`.
Lines Described(const NodeConfig& node, Road road, const std::vector<std::string>& words)
{
    std::stringstream text;
    DescribeNode(node, road, text);
    Lines lines;
    const auto beginning = "node " + std::to_string(node.number) + " ";
    for (std::string line; std::getline(text, line);) {
        EXPECT_TRUE(line.starts_with(beginning)) << line;
        line.erase(0, beginning.size());
        if (std::ranges::any_of(words, [&](const auto& word) { return line.starts_with(word + " "); }))
            lines.insert(line);
    }
    return lines;
}

std::vector<std::string> Difference(const Lines& a, const Lines& b)
{
    std::vector<std::string> only;
    std::ranges::set_difference(a, b, std::back_inserter(only));
    return only;
}

void ExpectSame(const Lines& read, const Lines& described)
{
    EXPECT_THAT(described, testing::Not(IsEmpty()));
    EXPECT_THAT(Difference(read, described), IsEmpty()) << "read, but not described";
    EXPECT_THAT(Difference(described, read), IsEmpty()) << "described, but not read";
}

class Nodes : public testing::TestWithParam<NodeConfig> {
protected:
    [[nodiscard]] int Inputs() const { return int(GetParam().inputs.size()); }
    [[nodiscard]] int Outputs() const { return int(GetParam().outputs.size()); }

    Vehicle vehicle{AllNodes()};
    RoadReader reader{vehicle, GetParam().number};
    const std::vector<std::string> configuration{"name", "type", "input", "output"};
};

TEST_P(Nodes, TellTheirVersions)
{
    ExpectSame(reader.ReadVersions(), Described(GetParam(), Road::Query, {"version"}));
}

TEST_P(Nodes, TellTheirHeaderByteByByte)
{
    ExpectSame(reader.ReadHeaderBytes(), Described(GetParam(), Road::Query, {"header"}));
}

TEST_P(Nodes, AreReadByQueriesAsDescribed)
{
    if (!GetParam().answersQueries) {
        EXPECT_FALSE(reader.Query(1));
        return;
    }
    ExpectSame(reader.ReadQueries(Inputs(), Outputs()), Described(GetParam(), Road::Query, configuration));
    ExpectSame(reader.ReadHeaderArray(), Described(GetParam(), Road::Query, {"header"}));
}

INSTANTIATE_TEST_SUITE_P(Vehicle, Nodes, testing::ValuesIn(MakeConfigs(AllNodes())),
                         [](const auto& row) { return Name(row.param); });

std::vector<NodeConfig> NodesWithMemory()
{
    auto nodes = MakeConfigs(AllNodes());
    std::erase_if(nodes, [](const NodeConfig& node) { return !HasRoad(node, Road::Memory); });
    return nodes;
}

class NodesWithImages : public Nodes {};

TEST_P(NodesWithImages, AreReadFromTheLineAsDescribed)
{
    ExpectSame(reader.ReadMemory(GetParam().type, Inputs(), Outputs()),
               Described(GetParam(), Road::Memory, configuration));
}

TEST_P(NodesWithImages, AreReadFromTheirFilesAsDescribed)
{
    const QTemporaryDir folder;
    const auto files = WriteImages({GetParam()}, "Bus 12", folder.path().toStdString());
    ASSERT_THAT(files, SizeIs(1));
    EXPECT_EQ(files[0].filename(), "Bus 12_Node " + std::to_string(GetParam().number) + ".bin");
    std::ifstream file(files[0], std::ios::binary);
    const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(file), {}};
    ASSERT_THAT(bytes, SizeIs(32768));
    EXPECT_EQ(bytes[2], GetParam().number);
    EXPECT_EQ(bytes[3], 13);
    EXPECT_EQ(bytes[14], GetParam().type);
    reader.UseImage(bytes);
    ExpectSame(reader.ReadMemory(GetParam().type, Inputs(), Outputs()),
               Described(GetParam(), Road::Memory, configuration));
}

INSTANTIATE_TEST_SUITE_P(Vehicle, NodesWithImages, testing::ValuesIn(NodesWithMemory()),
                         [](const auto& row) { return Name(row.param); });

TEST(ImageFiles, OnlyNodesThatHoldTheirConfigurationInMemoryHaveOne)
{
    const QTemporaryDir folder;
    const auto files = WriteImages(MakeConfigs(AllNodes()), "Bus", folder.filePath("made").toStdString());
    std::vector<std::string> names;
    for (const auto& file : files)
        names.push_back(file.filename().string());
    EXPECT_THAT(names, testing::ElementsAre("Bus_Node 1.bin", "Bus_Node 2.bin", "Bus_Node 3.bin", "Bus_Node 8.bin",
                                            "Bus_Node 9.bin", "Bus_Node 10.bin", "Bus_Node 11.bin", "Bus_Node 12.bin"));
}

TEST(VariableFlash, IsReadAsDescribed)
{
    Vehicle vehicle(AllNodes());
    RoadReader reader(vehicle, 5);
    const auto described = Described(MakeConfigs(AllNodes())[4], Road::Flash, {"input", "output"});
    const auto read = reader.ReadFlash();
    EXPECT_THAT(read, SizeIs(3 + 3 * 8));
    EXPECT_THAT(Difference(read, described), IsEmpty());
}

TEST(VariableFlash, IsThereIfTheFirstReadIsAnsweredWithAPlainValue)
{
    Vehicle vehicle(AllNodes());
    RoadReader reader(vehicle, 5);
    EXPECT_EQ(vehicle.Answer({940, false, false, 0}).size(), 1u);
    EXPECT_GE(reader.FlashByte(0), 0x40);
    EXPECT_EQ(reader.FlashByte(0x7000), 0xFF);
    EXPECT_THAT(vehicle.Answer({940, false, true, 1}), IsEmpty());
}

// The data frames of an array would pass for an answer to a flash read, but for their state.
TEST(VariableFlash, IsNotThereIfANodeAnswersItsFirstReadWithItsHeader)
{
    Vehicle vehicle(AllNodes());
    const RoadReader reader(vehicle, 13);
    const auto frames = vehicle.Answer({940, false, false, 0});
    ASSERT_THAT(frames, SizeIs(9));
    for (const auto& frame : frames)
        EXPECT_TRUE(frame.state);
}

TEST(VariableFlash, WalksThatLeadNowhereEnd)
{
    Vehicle vehicle(AllNodes());
    RoadReader reader(vehicle, 5);
    EXPECT_EQ(reader.Walk({}), 0);
    EXPECT_EQ(reader.Walk({0, 0}), -1);
    EXPECT_EQ(reader.Walk({0}), 2);
    EXPECT_GT(reader.Walk({5}), reader.Walk({1, 7}));
}

TEST(NodeDescriber, TheUsualRoadIsTheOneThatTheNodeAnswers)
{
    std::vector<std::optional<Road>> roads;
    for (const auto& node : MakeConfigs(AllNodes()))
        roads.push_back(UsualRoad(node));
    const auto query = Road::Query;
    const auto memory = Road::Memory;
    EXPECT_THAT(roads, testing::ElementsAre(query, query, query, query, Road::Flash, query, query, memory, query,
                                            memory, memory, query, query));
}

TEST(NodeConfigs, HaveEveryGrainThatTheRoadsKnow)
{
    std::set<int> onStates;
    std::set<int> usages;
    bool highReference = false;
    bool highRelationship = false;
    bool analog = false;
    for (const auto& node : MakeConfigs(Vehicle::DefaultNodes())) {
        for (const auto& input : node.inputs) {
            onStates.insert(input.onState);
            analog = analog || input.analog;
        }
        for (const auto& output : node.outputs)
            usages.insert(int(output.usage));
        highReference = highReference || node.texts.contains(256);
        highRelationship = highRelationship || node.relationships.contains(256);
    }
    EXPECT_THAT(onStates, testing::IsSupersetOf({1, 2, 7, 17, 33, 34}));
    EXPECT_THAT(usages, testing::ElementsAre(0, 1, 2, 3));
    EXPECT_TRUE(highReference);
    EXPECT_TRUE(highRelationship);
    EXPECT_TRUE(analog);
}

TEST(NodeConfigs, NamesFitTheirPlacesAndRelationshipsTheirBlocks)
{
    for (const auto& node : MakeConfigs(AllNodes())) {
        for (const auto& input : node.inputs)
            EXPECT_LE(input.name.size(), 32u) << input.name;
        for (const auto& output : node.outputs) {
            EXPECT_LE(output.name.size(), 32u) << output.name;
            EXPECT_LE(output.relationship.size(), 119u);
            EXPECT_TRUE(output.relationship.empty() || output.relationship.back() == 255);
        }
    }
}

TEST(NodeConfigs, EarlyOnStatesAreStoredAsTwoValues)
{
    auto setup = NodeSetup{.number = 2, .type = 0, .name = "Early"};
    setup.oldTypeQuery = true;
    const auto node = MakeConfigs({setup})[0];
    const MemoryImage image(node);
    for (std::uint16_t input = 0; input < 16; ++input)
        EXPECT_LE(image.At(std::uint16_t(0x0E00 + 3 * input)), 1);
    const auto lines = Described(node, Road::Memory, {"input"});
    EXPECT_THAT(lines, testing::IsSupersetOf({"input 8 on-state 18", "input 9 on-state 242", "input 13 on-state 241"}));
}

}  // namespace
}  // namespace fenrik
