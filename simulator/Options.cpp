#include "simulator/Options.h"

#include "simulator/PortLink.h"
#include "simulator/Words.h"

#include <algorithm>
#include <climits>
#include <stdexcept>

namespace fenrik {

namespace {

constexpr char kHelp[] = R"(Usage: fenrik-vehicle (--port N | --device-link PATH | --relay HOST:PORT) [options]
       fenrik-vehicle [--describe] [--write-images DIR] [--scenario FILE]

A vehicle of the Fenrik 2000 network on a pseudo-terminal. The tool finds it as a serial port.

  --port N             be COM<N> (1 to 16): makes the link fenrik-diagnostics/ports/com<N> in the
                       user's configuration home, and removes it at the end
  --device-link PATH   make this link in its place
  --relay HOST:PORT    be the vehicle of a user of this relay: its frames go to whoever is piped to it
  --name NAME          the user's name; Colleague if not given
  --grant, --deny      how the user answers who asks for access; --grant if nothing is said
  --ask                the answer comes from standard input, as with --control
  --legacy             be a vehicle of the older network, Fenrik 98: six nodes that pass a token
  --modem              be a modem at the port; the vehicle answers at 555-0100
  --scenario FILE      do what the file says (simulator/README.md describes the statements)
  --log FILE           write what is received and sent, a line for each frame
  --pace               send no faster than a line of 9600 baud
  --control            carry out scenario statements from standard input, one a line;
                       each is answered with "ok" or "error: <reason>"
  --duration SECONDS   end after this time
  --seed N             another course of chance (delays, noise, drift); 1 if not given
  --help               show this text

In place of running:

  --describe           print every node of the vehicle, a line for each field
  --road ROAD          describe what is learned by "query", "memory" or "flash", for the nodes that
                       have this road; without it, by each node's usual one
  --write-images DIR   write the memory of the older nodes to files "<system>_Node <n>.bin"
  --system NAME        the files' names begin so; Demonstration if not given

Prints "ready COM<N> <device>" when the port can be opened, "ready relay <name>" when the user is logged
on. Ends on SIGINT, SIGTERM and SIGHUP.

Exit codes: 0 ended as asked; 1 the terminal, the link or a file could not be made or read, or the relay
is not there or hung up; 2 the command line or the scenario is bad.
)";

int Whole(const std::string& option, const std::string& text, int least, int most)
{
    return Words(text).TakeNumber(option, least, most);
}

Road TakeRoad(const std::string& text)
{
    const auto road = FindRoad(text);
    if (!road)
        throw std::invalid_argument("--road is query, memory or flash");
    return *road;
}

struct OptionRow {
    const char* name;
    bool hasValue;
    void (*take)(Options& options, const std::string& value);
};

const OptionRow kRows[] = {
    {"--port", true, [](Options& o, const std::string& v) { o.port = Whole("--port", v, 1, 16); }},
    {"--device-link", true, [](Options& o, const std::string& v) { o.deviceLink = v; }},
    {"--relay", true, [](Options& o, const std::string& v) { o.relay = v; }},
    {"--name", true, [](Options& o, const std::string& v) { o.name = v; }},
    {"--grant", false, [](Options& o, const std::string&) { o.access = AccessAnswer::Grant; }},
    {"--deny", false, [](Options& o, const std::string&) { o.access = AccessAnswer::Deny; }},
    {"--ask", false, [](Options& o, const std::string&) { o.access = AccessAnswer::Ask; }},
    {"--modem", false, [](Options& o, const std::string&) { o.modem = true; }},
    {"--scenario", true, [](Options& o, const std::string& v) { o.scenario = v; }},
    {"--log", true, [](Options& o, const std::string& v) { o.log = v; }},
    {"--pace", false, [](Options& o, const std::string&) { o.paced = true; }},
    {"--control", false, [](Options& o, const std::string&) { o.control = true; }},
    {"--duration", true,
     [](Options& o, const std::string& v) { o.duration = Words(v).TakeDecimal("--duration", 0, 1e9); }},
    {"--seed", true, [](Options& o, const std::string& v) { o.seed = unsigned(Whole("--seed", v, 0, INT_MAX)); }},
    {"--describe", false, [](Options& o, const std::string&) { o.describe = true; }},
    {"--road", true, [](Options& o, const std::string& v) { o.road = TakeRoad(v); }},
    {"--write-images", true, [](Options& o, const std::string& v) { o.writeImages = v; }},
    {"--system", true, [](Options& o, const std::string& v) { o.system = v; }},
    {"--legacy", false, [](Options& o, const std::string&) { o.legacy = true; }},
    {"--help", false, [](Options& o, const std::string&) { o.help = true; }},
};

}  // namespace

Options Options::Parse(const std::vector<std::string>& arguments)
{
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const auto* row = std::ranges::find_if(kRows, [&](const OptionRow& r) { return arguments[i] == r.name; });
        if (row == std::end(kRows))
            throw std::invalid_argument("unknown option " + arguments[i]);
        if (row->hasValue && i + 1 == arguments.size())
            throw std::invalid_argument(arguments[i] + " needs a value");
        row->take(options, row->hasValue ? arguments[++i] : std::string());
    }
    const bool hasPort = options.port != 0 || !options.deviceLink.empty();
    if (!options.help && options.RunsVehicle() && hasPort != options.relay.empty())
        throw std::invalid_argument("either --port, --device-link or --relay is needed");
    if (options.legacy && (!options.relay.empty() || !options.RunsVehicle()))
        throw std::invalid_argument("--legacy needs a port, and its nodes can't be described");
    if (options.modem && (!options.relay.empty() || options.legacy))
        throw std::invalid_argument("--modem needs a port, and has no module of the older network");
    return options;
}

const char* Options::HelpText()
{
    return kHelp;
}

std::string Options::PortName() const
{
    return port > 0 ? "COM" + std::to_string(port) : deviceLink.string();
}

std::filesystem::path Options::LinkPath() const
{
    return deviceLink.empty() ? PortLink::ForPort(port) : deviceLink;
}

}  // namespace fenrik
