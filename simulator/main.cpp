#include "simulator/ConfigMaker.h"
#include "simulator/ImageFiles.h"
#include "simulator/Options.h"
#include "simulator/Program.h"
#include "simulator/Scenario.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <stdexcept>

namespace {

constexpr int kExitFailed = 1;
constexpr int kExitBadInput = 2;

std::optional<fenrik::Options> ReadOptions(int argc, char** argv)
{
    try {
        return fenrik::Options::Parse({argv + 1, argv + argc});
    } catch (const std::invalid_argument& bad) {
        std::cerr << "fenrik-vehicle: " << bad.what() << "\nTry fenrik-vehicle --help.\n";
        return std::nullopt;
    }
}

std::optional<fenrik::Scenario> ReadScenario(const std::filesystem::path& path, fenrik::Network network)
{
    std::stringstream text;
    if (!path.empty()) {
        std::ifstream file(path);
        if (!file || std::filesystem::is_directory(path))
            throw std::runtime_error(path.string() + ": " + std::strerror(file ? EISDIR : errno));
        text << file.rdbuf();
    }
    std::vector<fenrik::ScenarioProblem> problems;
    auto scenario = fenrik::Scenario::Parse(text, problems, network);
    for (const auto& problem : problems)
        std::cerr << path.string() << ":" << problem.line << ": " << problem.text << "\n";
    if (!problems.empty())
        return std::nullopt;
    return scenario;
}

void TellNodes(const fenrik::Options& options, const fenrik::Scenario& scenario)
{
    const auto nodes = fenrik::MakeConfigs(scenario.nodes);
    if (!options.writeImages.empty())
        fenrik::WriteImages(nodes, options.system, options.writeImages);
    if (!options.describe)
        return;
    for (const auto& node : nodes) {
        const auto road = options.road ? options.road : fenrik::UsualRoad(node);
        if (road && fenrik::HasRoad(node, *road))
            fenrik::DescribeNode(node, *road, std::cout);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    const auto options = ReadOptions(argc, argv);
    if (!options)
        return kExitBadInput;
    if (options->help) {
        std::cout << fenrik::Options::HelpText();
        return EXIT_SUCCESS;
    }
    try {
        const auto scenario = ReadScenario(options->scenario, options->NetworkKind());
        if (!scenario)
            return kExitBadInput;
        if (options->RunsVehicle())
            fenrik::Program(*options, *scenario).Run();
        else
            TellNodes(*options, *scenario);
    } catch (const std::exception& failure) {
        std::cerr << "fenrik-vehicle: " << failure.what() << "\n";
        return kExitFailed;
    }
    return EXIT_SUCCESS;
}
