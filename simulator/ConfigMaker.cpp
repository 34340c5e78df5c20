#include "simulator/ConfigMaker.h"

#include "simulator/BusCommands.h"
#include "simulator/Relationship.h"

#include <algorithm>
#include <iterator>
#include <sstream>

namespace fenrik {

namespace {

constexpr int kTwoBitOnStates[] = {17, 34};  // odd inputs switch to ground, even ones to battery

struct InputTraits {
    int switchType;
    int onState;
    bool threeWay;
    int offDelay;  // milliseconds
};

constexpr InputTraits kInputTraits[] = {
    {3, 17, false, 0},   {1, 17, false, 500},   {3, 34, true, 0},      {4, 33, false, 1250}, {2, 2, false, 0},
    {1, 17, true, 2000}, {6, 34, false, 0},     {3, 17, false, 30000}, {5, 1, false, 250},   {3, 17, true, 0},
    {4, 7, false, 0},    {1, 17, false, 65000}, {3, 34, false, 0},
};
constexpr int kSpareInputs[] = {13, 14};  // of the models with 16

struct OutputTraits {
    OutputUsage usage;
    std::string_view relationship;  // "own": the command dealt to it; "input": of this node; "other": any
    int delayOn;                    // half seconds
    int delayOff;
    int pwmHalves;
    int shedLevel;
    bool flashing;
    int sequence;
    int faultDetectType;
};

constexpr OutputTraits kOutputTraits[] = {
    {OutputUsage::Driven, "own", 0, 0, 200, 0, false, 0, 1},
    {OutputUsage::Driven, "own other OR", 2, 3, 151, 1, false, 1, 1},
    {OutputUsage::Driven, "own other NOT AND", 0, 10, 200, 2, false, 2, 2},
    {OutputUsage::Driven, "own | other", 4, 0, 101, 3, true, 0, 1},
    {OutputUsage::Driven, "own input AND", 5, 6, 200, 4, false, 3, 0},
    {OutputUsage::PermanentlyOn, "", 0, 0, 200, 0, false, 0, 3},
    {OutputUsage::Driven, "own other OR | input | own NOT input AND", 1, 1200, 0, 5, false, 4, 1},
    {OutputUsage::Driven, "own input XOR", 600, 7, 99, 6, true, 0, 2},
    {OutputUsage::NameOnly, "", 0, 0, 0, 0, false, 0, 0},
    {OutputUsage::Driven, "own NOT", 0, 8, 55, 7, false, 5, 1},
    {OutputUsage::Driven, "own other input AND OR", 511, 512, 200, 8, true, 6, 1},
    {OutputUsage::Unused, "", 0, 0, 0, 0, false, 0, 0},
    {OutputUsage::Driven, "own", 0, 1, 127, 1, false, 7, 0},
};

// The models' own habits: where they begin to count references, how their header travels, their versions.
struct TypeTraits {
    int type;
    std::uint16_t firstReference;
    bool bigEndianHeader;
    VersionConfig versions;
};

constexpr TypeTraits kTypeTraits[] = {
    {0, 1, false, {0x0103, 0, 0, 0}},
    {2, 1, false, {0x0204, 0, 0x0205, 0}},
    {5, 1, false, {0x0201, 0, 0, 0}},
    {6, 1, false, {0x0302, 0, 0, 0}},
    {9, 1, true, {0x040C, 0x0002, 0x0042, 0}},
    {10, 0, false, {0x0500, 0x0101, 0, 0}},
    {16, 236, true, {0x0607, 0, 0x0110, 0x0203}},
};
constexpr TypeTraits kOtherTypes = {-1, 1, false, {0x0100, 0, 0, 0}};

constexpr std::string_view kComments[] = {"Checked at delivery", "Fused", "See wiring sheet 12", "Spare part fitted"};

template <typename Row, std::size_t Size>
const Row& InTurn(const Row (&rows)[Size], std::size_t number)
{
    return rows[number % Size];
}

const TypeTraits& TraitsOf(int type)
{
    const auto* row = std::ranges::find(kTypeTraits, type, &TypeTraits::type);
    return row == std::end(kTypeTraits) ? kOtherTypes : *row;
}

/// Gives out the plain commands one after the other, with names that stay apart when they come round again.
class Deal {
public:
    struct Card {
        int command;
        std::string name;
    };
    Card Next(const std::string& word)
    {
        const auto commands = PlainCommands();
        const auto& command = commands[mNext % commands.size()];
        const auto round = mNext++ / commands.size();
        auto name = std::string(command.name) + word;
        if (round > 0)
            name.append(" ").append(std::to_string(round + 1));
        return {command.number, name};
    }

private:
    std::size_t mNext = 0;
};

/// Makes one node's configuration.
class Maker {
public:
    Maker(const NodeSetup& setup, int nodeCount, Deal& inputs, Deal& outputs)
        : mSetup(setup), mType(*FindNodeType(setup.type)), mTraits(TraitsOf(setup.type)), mInputs(inputs),
          mOutputs(outputs), mNextText(mTraits.firstReference), mNextRelationship(mTraits.firstReference),
          mNextList(mTraits.firstReference)
    {
        MakeNode();
        MakeHeader(nodeCount);
        for (int i = 1; i <= mType.inputs; ++i)
            mConfig.inputs.push_back(MakeInput(i));
        for (int i = 1; i <= mType.outputs; ++i)
            mConfig.outputs.push_back(MakeOutput(i));
    }

    NodeConfig Take() { return std::move(mConfig); }

private:
    void MakeNode()
    {
        mConfig.number = mSetup.number;
        mConfig.type = mSetup.type;
        mConfig.variableFlash = mSetup.type == kComfortModule && !mSetup.memoryOnly && !mSetup.plainFlash;
        mConfig.answersQueries = !mSetup.memoryOnly && !mConfig.variableFlash;
        mConfig.earlyOnStates = mSetup.oldTypeQuery;
        mConfig.name = mSetup.name;
        mConfig.nameRef = Text(mConfig.name);
        mConfig.comment = "Node " + std::to_string(mSetup.number) + " of the demonstration vehicle";
        mConfig.commentRef = Text(mConfig.comment);
        mConfig.position = std::uint8_t(mSetup.number);
        for (std::size_t i = 0; i < mConfig.extraInfo.size(); ++i)
            mConfig.extraInfo[i] = std::uint8_t(mSetup.number * 16 + int(i));
        mConfig.versions = mTraits.versions;
        if (mSetup.type == 2 && mSetup.early)
            mConfig.versions.os = kEarlyProgram;
    }

    void MakeHeader(int nodeCount)
    {
        auto& header = mConfig.header;
        header.words = {0x1234, std::uint16_t(0x5600 + mSetup.number), 0x789A};
        header.spare = 3;
        header.nodeCount = std::uint8_t(nodeCount);
        header.version = {2, 4, std::uint8_t(10 + mSetup.number), 1};
        header.month = 9;
        header.day = std::uint8_t(10 + mSetup.number % 16);
        header.year = 2023;
        header.bigEndian = mTraits.bigEndianHeader;
    }

    InputConfig MakeInput(int number)
    {
        InputConfig input;
        if (mType.inputs == 16 && std::ranges::find(kSpareInputs, number) != std::end(kSpareInputs))
            return input;
        if (IsAnalog(number))
            return MakeAnalogInput(number);
        const auto& traits = InTurn(kInputTraits, std::size_t(number - 1));
        const auto card = mInputs.Next(" Sw");
        input.name = card.name;
        input.command = card.command;
        input.nameRef = Text(input.name);
        input.comment = Comment(number);
        input.commentRef = Text(input.comment);
        input.switchType = traits.switchType;
        input.onState = mType.bitsPerInput == 2 ? kTwoBitOnStates[(number - 1) % 2] : traits.onState;
        input.threeWay = traits.threeWay;
        input.offDelay = traits.offDelay;
        if (number % 4 == 0)
            input.onListRef = List({std::uint16_t(card.command), 1});
        if (number % 8 == 0)
            input.offListRef = List({std::uint16_t(card.command), 0, 7});
        return input;
    }

    // Models with queries can measure: the last input of a small one, the last two of a large one.
    [[nodiscard]] bool IsAnalog(int number) const
    {
        const int count = mType.number == 16 ? 2 : mType.number == 10 ? 1 : 0;
        return number > mType.inputs - count;
    }

    InputConfig MakeAnalogInput(int number)
    {
        InputConfig input;
        const auto& gauge = AnalogCommands()[std::size_t(mType.inputs - number) + 3];
        input.analog = true;
        input.command = gauge.number;
        input.name = std::string(gauge.name) + " Sender";
        input.nameRef = Text(input.name);
        input.thresholdListRef = List({0, 1, 2});
        return input;
    }

    OutputConfig MakeOutput(int number)
    {
        const auto& traits = InTurn(kOutputTraits, std::size_t(number - 1));
        const auto card = mOutputs.Next("");
        OutputConfig output;
        output.usage = traits.usage;
        if (mConfig.variableFlash)
            output.usage = OutputUsage::Driven;
        output.name = output.usage == OutputUsage::Unused ? std::string(" ") : card.name;
        output.nameRef = Text(output.name);
        output.comment = Comment(number + 1);
        output.commentRef = Text(output.comment);
        MakeRelationship(output, traits, card.command);
        output.delayOn = traits.delayOn;
        output.delayOff = traits.delayOff;
        output.pwmHalves = traits.pwmHalves;
        output.shedLevel = traits.shedLevel;
        output.flashing = traits.flashing;
        output.sequence = traits.sequence;
        output.faultDetectType = traits.faultDetectType;
        return output;
    }

    void MakeRelationship(OutputConfig& output, const OutputTraits& traits, int own)
    {
        if (output.usage == OutputUsage::PermanentlyOn)
            output.relationship = PermanentlyOnRelationship();
        if (output.usage == OutputUsage::Driven)
            output.relationship = EncodeRelationship(
                Fill(traits.usage == OutputUsage::Driven ? traits.relationship : std::string_view("own"), own));
        if (output.relationship.empty())
            return;
        output.relationshipRef = mNextRelationship++;
        mConfig.relationships[output.relationshipRef] = output.relationship;
    }

    // The pattern with its words for commands replaced by numbers.
    [[nodiscard]] std::string Fill(std::string_view pattern, int own)
    {
        std::string filled;
        std::istringstream words{std::string(pattern)};
        for (std::string word; words >> word;) {
            if (word == "own")
                word = std::to_string(own);
            else if (word == "input")
                word = std::to_string(InputCommand());
            else if (word == "other")
                word = std::to_string(OtherCommand(own));
            filled += word + " ";
        }
        return filled;
    }

    [[nodiscard]] int InputCommand()
    {
        for (std::size_t tries = 0; tries < mConfig.inputs.size(); ++tries) {
            const auto& input = mConfig.inputs[mPicked++ % mConfig.inputs.size()];
            if (input.command != 0 && !input.analog)
                return input.command;
        }
        return OtherCommand(0);
    }

    [[nodiscard]] int OtherCommand(int own)
    {
        const auto commands = PlainCommands();
        const int picked = commands[(mPicked++ * 7 + 20) % commands.size()].number;
        return picked == own ? OtherCommand(own) : picked;
    }

    static std::string Comment(int number)
    {
        return number % 3 == 0 ? std::string(InTurn(kComments, std::size_t(number))) : std::string();
    }

    std::uint16_t Text(const std::string& text)
    {
        if (text.empty())
            return kNoReference;
        mConfig.texts[mNextText] = text;
        return mNextText++;
    }

    std::uint16_t List(std::vector<std::uint16_t> entries)
    {
        mConfig.lists[mNextList] = std::move(entries);
        return mNextList++;
    }

    static constexpr int kComfortModule = 6;
    static constexpr std::uint16_t kEarlyProgram = 0x0102;

    const NodeSetup& mSetup;
    const NodeType& mType;
    const TypeTraits& mTraits;
    Deal& mInputs;
    Deal& mOutputs;
    NodeConfig mConfig;
    std::uint16_t mNextText;
    std::uint16_t mNextRelationship;
    std::uint16_t mNextList;
    std::size_t mPicked = 0;
};

}  // namespace

std::vector<NodeConfig> MakeConfigs(const std::vector<NodeSetup>& setups)
{
    int nodeCount = 0;
    for (const auto& setup : setups)
        nodeCount = std::max(nodeCount, setup.number);
    Deal inputs;
    Deal outputs;
    std::vector<NodeConfig> configs;
    for (const auto& setup : setups)
        configs.push_back(Maker(setup, nodeCount, inputs, outputs).Take());
    return configs;
}

}  // namespace fenrik
