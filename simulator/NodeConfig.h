#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace fenrik {

using ByteString = std::vector<std::uint8_t>;

/// A node numbers its texts, relationships and lists; this number stands for none.
inline constexpr std::uint16_t kNoReference = 0xFFFF;

/// How an input is configured.
struct InputConfig {
    std::string name;  ///< at most 32 characters
    std::string comment;
    std::uint16_t nameRef = kNoReference;
    std::uint16_t commentRef = kNoReference;
    int command = 0;     ///< that it sends; 0: the input is not used
    int switchType = 0;  ///< 1 to 4: momentary N/O, N/C, latching N/O, N/C; 5 momentary, 6 latching
    int onState = 0;     ///< 17 ground, 34 battery, 33 either, 1 not battery, 2 not ground, 7 floating
    bool threeWay = false;
    int offDelay = 0;  ///< milliseconds
    std::uint16_t onListRef = kNoReference;
    std::uint16_t offListRef = kNoReference;
    bool analog = false;  ///< measures, and sends the value with `command`
    std::uint16_t thresholdListRef = kNoReference;
};

/// What decides about an output.
enum class OutputUsage { Unused = 0, Driven = 1, PermanentlyOn = 2, NameOnly = 3 };

/// How an output is configured.
struct OutputConfig {
    std::string name;  ///< at most 32 characters
    std::string comment;
    std::uint16_t nameRef = kNoReference;
    std::uint16_t commentRef = kNoReference;
    OutputUsage usage = OutputUsage::Unused;
    ByteString relationship;  ///< of a driven output; see Relationship.h
    std::uint16_t relationshipRef = kNoReference;
    int delayOn = 0;    ///< half seconds
    int delayOff = 0;   ///< half seconds
    int pwmHalves = 0;  ///< half percents
    int shedLevel = 0;  ///< 1 to 8; 0: never shed
    bool flashing = false;
    int sequence = 0;
    int faultDetectType = 0;
};

/// What the configuration's author wrote at its head.
struct HeaderConfig {
    std::array<std::uint16_t, 3> words{};
    std::uint8_t spare = 0;
    std::uint8_t nodeCount = 0;
    std::array<std::uint8_t, 4> version{};
    std::uint8_t month = 1;
    std::uint8_t day = 1;
    std::uint16_t year = 2000;
    bool bigEndian = false;  ///< its words travel high byte first
};

/// Versions of a node's programs: high byte "." low byte; 0: there is none.
struct VersionConfig {
    std::uint16_t os = 0;
    std::uint16_t beta = 0;
    std::uint16_t pic = 0;
    std::uint16_t fpga = 0;
};

/// All that a node could be asked about its configuration.
struct NodeConfig {
    int number = 1;
    int type = 0;
    bool answersQueries = true;  ///< of command 940, other than for variable flash
    bool variableFlash = false;  ///< is read through command 940 byte by byte
    bool earlyOnStates = false;  ///< stores on-states as 0 or 1 and no finer
    std::string name;
    std::string comment;
    std::uint16_t nameRef = kNoReference;
    std::uint16_t commentRef = kNoReference;
    std::uint8_t position = 0;
    std::array<std::uint8_t, 8> extraInfo{};
    std::vector<InputConfig> inputs;
    std::vector<OutputConfig> outputs;
    HeaderConfig header;
    VersionConfig versions;

    std::map<std::uint16_t, std::string> texts;
    std::map<std::uint16_t, ByteString> relationships;
    std::map<std::uint16_t, std::vector<std::uint16_t>> lists;
};

}  // namespace fenrik
