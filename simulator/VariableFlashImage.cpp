#include "simulator/VariableFlashImage.h"

#include "simulator/ByteWriter.h"

#include <algorithm>
#include <iterator>

namespace fenrik {

namespace {

constexpr int kDescribed = 0x8000;
constexpr int kHasParts = 0x4000;
constexpr std::uint8_t kErased = 0xFF;

ByteString Element(int flags, const ByteString& content)
{
    constexpr int kWidth = 2;
    auto element = ByteWriter().BigWord(flags | (kWidth + int(content.size()))).Take();
    // Not by insert: at -O3 the compiler then sees a copy out of bounds that is none.
    std::ranges::copy(content, std::back_inserter(element));
    return element;
}

ByteString Leaf(const ByteString& content)
{
    return Element(0, content);
}

ByteString Parts(int flags, const std::vector<ByteString>& parts)
{
    ByteString content;
    for (const auto& part : parts)
        content.insert(content.end(), part.begin(), part.end());
    return Element(flags | kHasParts, content);
}

ByteString TextLeaf(const std::string& text)
{
    return Leaf(ByteWriter().Text(text).Take());
}

ByteString InputCommands(const NodeConfig& node)
{
    ByteWriter writer;
    writer.Byte(node.number).Byte(node.header.nodeCount).BigWord(node.header.year).Zeros(6);
    for (const auto& input : node.inputs)
        writer.BigWord(input.command);
    return Leaf(writer.Take());
}

// The last one fills its element to the end and does without the closing byte.
ByteString Relationships(const NodeConfig& node)
{
    std::vector<ByteString> parts{TextLeaf("Output relationships")};
    for (const auto& output : node.outputs) {
        auto relationship = output.relationship;
        if (&output == &node.outputs.back())
            relationship.pop_back();
        parts.push_back(Leaf(relationship));
    }
    return Parts(kDescribed, parts);
}

ByteString ShedLevels(const NodeConfig& node)
{
    ByteWriter writer;
    for (std::size_t i = 2; i < node.outputs.size(); ++i)
        writer.Byte(node.outputs[i].shedLevel);
    return Parts(0, {Leaf(writer.Take())});
}

}  // namespace

VariableFlashImage::VariableFlashImage(const NodeConfig& node)
    : mBytes(Parts(0, {InputCommands(node), Relationships(node), TextLeaf(node.name), TextLeaf(node.comment),
                       Leaf(ByteWriter().Word(node.versions.os).Take()), ShedLevels(node)}))
{
}

std::uint16_t VariableFlashImage::WordAt(std::uint16_t address) const
{
    const auto at = [&](std::size_t i) { return i < mBytes.size() ? mBytes[i] : kErased; };
    return std::uint16_t(at(address) | at(std::size_t(address) + 1) << 8);
}

}  // namespace fenrik
