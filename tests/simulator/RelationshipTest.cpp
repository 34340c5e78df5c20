#include "simulator/Relationship.h"

#include <gmock/gmock.h>
#include <set>

namespace fenrik {
namespace {

struct RelationshipRow {
    const char* name;
    const char* text;
    ByteString bytes;
    int levels;
};

class Relationships : public testing::TestWithParam<RelationshipRow> {};

TEST_P(Relationships, AreEncoded)
{
    EXPECT_EQ(EncodeRelationship(GetParam().text), GetParam().bytes);
    EXPECT_EQ(LevelCount(GetParam().bytes), GetParam().levels);
}

INSTANTIATE_TEST_SUITE_P(
    Simulator, Relationships,
    testing::Values(RelationshipRow{"OneCommand", "9", {254, 0, 9, 255}, 0},
                    RelationshipRow{"AHighNumber", "560", {254, 2, 48, 255}, 0},
                    RelationshipRow{"Inverted", "9 NOT", {254, 0, 9, 240, 255}, 0},
                    RelationshipRow{"And", "9 10 AND", {254, 0, 9, 254, 0, 10, 241, 255}, 0},
                    RelationshipRow{"AndNot", "9 10 NOT AND", {254, 0, 9, 254, 0, 10, 240, 241, 255}, 0},
                    RelationshipRow{"OrXor", "1 2 OR 3 XOR", {254, 0, 1, 254, 0, 2, 242, 254, 0, 3, 243, 255}, 0},
                    RelationshipRow{"TwoLevels", "9 | 10", {254, 0, 9, 253, 1, 0, 50, 254, 0, 10, 255, 255}, 1},
                    RelationshipRow{"ThreeLevels",
                                    "9 | 10 | 11",
                                    {254, 0, 9, 253, 1, 0, 50, 254, 0, 10, 255, 253, 2, 0, 50, 254, 0, 11, 255, 255},
                                    2}),
    [](const auto& row) { return row.param.name; });

struct Outcome {
    const char* name;
    const char* text;
    std::set<int> on;
    bool holds;
};

class Outcomes : public testing::TestWithParam<Outcome> {};

TEST_P(Outcomes, FollowTheCommands)
{
    const auto isOn = [](int command) { return GetParam().on.contains(command); };
    EXPECT_EQ(Holds(EncodeRelationship(GetParam().text), isOn), GetParam().holds);
}

INSTANTIATE_TEST_SUITE_P(
    Simulator, Outcomes,
    testing::Values(Outcome{"Off", "1", {}, false}, Outcome{"On", "1", {1}, true}, Outcome{"NotOff", "1 NOT", {}, true},
                    Outcome{"NotOn", "1 NOT", {1}, false}, Outcome{"AndOfOne", "1 2 AND", {1}, false},
                    Outcome{"AndOfBoth", "1 2 AND", {1, 2}, true}, Outcome{"OrOfOne", "1 2 OR", {2}, true},
                    Outcome{"XorOfBoth", "1 2 XOR", {1, 2}, false}, Outcome{"XorOfOne", "1 2 XOR", {1}, true},
                    Outcome{"AndNotMet", "1 2 NOT AND", {1}, true},
                    Outcome{"AndNotUnmet", "1 2 NOT AND", {1, 2}, false}, Outcome{"FirstLevel", "1 | 2", {1}, true},
                    Outcome{"SecondLevel", "1 | 2", {2}, true}, Outcome{"ThirdLevel", "1 | 2 | 3", {3}, true},
                    Outcome{"NoLevel", "1 | 2 | 3", {4}, false}),
    [](const auto& row) { return row.param.name; });

TEST(Relationship, ThePermanentOneHoldsWhateverIsOn)
{
    EXPECT_TRUE(Holds(PermanentlyOnRelationship(), [](int) { return false; }));
    EXPECT_FALSE(Holds({}, [](int) { return true; }));
}

}  // namespace
}  // namespace fenrik
