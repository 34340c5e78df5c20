#include "relay/RelayOptions.h"

#include "pipe/PipeBodies.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace fenrik {

namespace {

constexpr char kHelp[] = R"(Usage: fenrik-relay --listen ADDRESS:PORT [options]

The relay server of the Fenrik diagnostics tools: users log on, one asks for a pipe to another, and the relay passes
chat, echoes and the messages of the vehicle's network between the two.

  --listen ADDRESS:PORT   listen here, e.g. 192.168.0.5:48051 or [::1]:48051; may be given more than once.
                          Port 0 lets the system choose
  --consent grant|ask|deny
                          who lets the user of a pipe send to the vehicle's network: the relay, at once; the
                          piped user; nobody. ask if not given
  --log FILE              append the log to this file in place of standard error; SIGHUP, which otherwise
                          ends the relay, then opens the file anew
  --max-users N           users logged on at the same time, 1 to 100000; 1000 if not given
  --max-per-address N     connections from one address (IPv6: one network of 64 bits); 64 if not given
  --max-body BYTES        longest body of a client's frame, 165 to 32767; 32767 if not given
  --max-rate N            frames a second of one client, 10 to 1000000; 1000 if not given. Faster ones wait
  --max-unsent BYTES      what may wait for a slow reader before it is cut off, 65536 and up; 262144 if not given
  --logon-time SECONDS    a client that has not logged on by then is cut off, 1 to 3600; 10 if not given
  --stall-time SECONDS    a client that reads nothing for so long is cut off, 1 to 3600; 30 if not given
  --help                  show this text
  --version               show the version

There is no password and no encryption: let it listen in a network whose users you trust, or behind a tunnel.

Prints "ready ADDRESS:PORT" for each address when clients can connect. Ends on SIGTERM and SIGINT: the users are told,
and what waits for them is sent for two seconds at most; a second signal ends it at once.

Exit codes: 0 ended as asked; 1 an address can't be listened to, the log can't be written, or the system failed;
2 the command line is bad.
)";

int Number(const std::string& option, const std::string& text, int least, int most)
{
    int value = 0;
    const auto* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end || value < least || value > most)
        throw std::invalid_argument(option + " is a number from " + std::to_string(least) + " to " +
                                    std::to_string(most));
    return value;
}

Consent TakeConsent(const std::string& text)
{
    if (text == "grant")
        return Consent::Grant;
    if (text == "ask")
        return Consent::Ask;
    if (text == "deny")
        return Consent::Deny;
    throw std::invalid_argument("--consent is grant, ask or deny");
}

constexpr int kMost = 1 << 30;

struct OptionRow {
    const char* name;
    bool hasValue;
    void (*take)(RelayOptions& options, const std::string& name, const std::string& value);
};

using O = RelayOptions;
using S = std::string;

const OptionRow kRows[] = {
    {"--listen", true, [](O& o, const S&, const S& v) { o.listen.push_back(v); }},
    {"--consent", true, [](O& o, const S&, const S& v) { o.consent = TakeConsent(v); }},
    {"--log", true, [](O& o, const S&, const S& v) { o.log = v; }},
    {"--max-users", true, [](O& o, const S& n, const S& v) { o.limits.users = Number(n, v, 1, 100000); }},
    {"--max-per-address", true,
     [](O& o, const S& n, const S& v) { o.limits.usersPerAddress = Number(n, v, 1, kMost); }},
    {"--max-body", true,
     [](O& o, const S& n, const S& v) {
         o.limits.longestBody = std::size_t(Number(n, v, int(PipeLogon::kSize), int(PipeFrame::kLongestBody)));
     }},
    {"--max-rate", true, [](O& o, const S& n, const S& v) { o.limits.framesPerSecond = Number(n, v, 10, 1000000); }},
    {"--max-unsent", true,
     [](O& o, const S& n, const S& v) { o.limits.mostUnsent = std::size_t(Number(n, v, 65536, kMost)); }},
    {"--logon-time", true, [](O& o, const S& n, const S& v) { o.limits.logonSeconds = Number(n, v, 1, 3600); }},
    {"--stall-time", true, [](O& o, const S& n, const S& v) { o.limits.stallSeconds = Number(n, v, 1, 3600); }},
    {"--help", false, [](O& o, const S&, const S&) { o.help = true; }},
    {"--version", false, [](O& o, const S&, const S&) { o.version = true; }},
};

}  // namespace

RelayOptions RelayOptions::Parse(const std::vector<std::string>& arguments)
{
    RelayOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const auto& name = arguments[i];
        const auto* row = std::ranges::find_if(kRows, [&](const OptionRow& r) { return name == r.name; });
        if (row == std::end(kRows))
            throw std::invalid_argument("unknown option " + name);
        if (row->hasValue && i + 1 == arguments.size())
            throw std::invalid_argument(name + " needs a value");
        row->take(options, name, row->hasValue ? arguments[++i] : std::string());
    }
    if (options.listen.empty() && !options.help && !options.version)
        throw std::invalid_argument("--listen is needed");
    return options;
}

const char* RelayOptions::HelpText()
{
    return kHelp;
}

}  // namespace fenrik
