#include "relay/RelayProgram.h"

#include <cstdlib>
#include <iostream>
#include <stdexcept>

namespace {

constexpr int kExitFailed = 1;
constexpr int kExitBadInput = 2;

int Run(const fenrik::RelayOptions& options)
{
    if (options.help)
        std::cout << fenrik::RelayOptions::HelpText();
    else if (options.version)
        std::cout << "fenrik-relay " FENRIK_VERSION "\n";
    else
        fenrik::RelayProgram(options).Run();
    return EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        return Run(fenrik::RelayOptions::Parse({argv + 1, argv + argc}));
    } catch (const std::invalid_argument& bad) {
        std::cerr << "fenrik-relay: " << bad.what() << "\nTry fenrik-relay --help.\n";
        return kExitBadInput;
    } catch (const std::exception& failure) {
        std::cerr << "fenrik-relay: " << failure.what() << "\n";
        return kExitFailed;
    }
}
