// The relay behind its sockets: four clients that send any bytes at all, in pieces, and come and go. Whatever they do,
// what the relay sends is well-formed, and pipes join two users that are logged on. One of the four finds it full.
//
// The input is a list of steps. A step's first byte: bits 0 and 1 the client, bits 2 and 3 what it does, bit 4 that a
// frame has a length of its type.

#include "FuzzPipe.h"
#include "relay/FrameIntake.h"

#include <array>
#include <cstdlib>
#include <memory>
#include <sstream>

namespace fenrik {
namespace {

/// Checks what the relay sends.
class CheckedLine final : public UserLine {
public:
    void Send(PipeFrameType type, std::string_view body) override
    {
        const auto* rule = FindPipeRule(PipeDirection::ToClient, type);
        if (ended || !rule || !rule->Fits(body.size()))
            std::abort();
        ++sent;
    }
    void End() override { ended = true; }
    // A client that has got much for what it sent reads for a while.
    [[nodiscard]] bool Backlogged() const override { return sent % 64 == 63; }

    bool ended = false;
    unsigned sent = 0;
};

struct Client {
    explicit Client(const RelayLimits& limits) : intake(limits) {}

    CheckedLine line;
    User user{line, "10.0.0.1"};
    FrameIntake intake;
};

class Room {
public:
    explicit Room(Consent consent) : mExchange(mLimits, consent, mLog)
    {
        for (auto& client : mClients)
            client = std::make_unique<Client>(mLimits);
    }

    void Run(FuzzSteps steps)
    {
        while (!steps.AtEnd()) {
            Step(steps);
            Check();
        }
        mExchange.Close();
    }

private:
    void Step(FuzzSteps& steps)
    {
        const unsigned step = steps.Byte();
        auto& client = mClients[step & 3];
        switch (step >> 2 & 3) {
        case 0:
            return Feed(*client, std::string(steps.Bytes(steps.Byte())));
        case 1:
            return Feed(*client,
                        (step & 16) != 0 ? FittingPipeFrame(steps, PipeDirection::ToServer) : AnyPipeFrame(steps));
        case 2:
            mNow += steps.Byte() / 50.0;
            ++client->line.sent;
            mExchange.Users().Announce(mNow);
            return Feed(*client, {});
        case 3:
            mExchange.Leave(client->user, "gone", mNow);
            client = std::make_unique<Client>(mLimits);
            return;
        }
    }

    void Feed(Client& client, const std::string& bytes)
    {
        if (client.intake.Room() >= bytes.size())
            client.intake.Append(bytes);
        client.intake.Work(client.user, mExchange, mNow);
    }

    void Check() const
    {
        std::size_t ends = 0;
        for (const auto& client : mClients) {
            const auto& user = client->user;
            const auto* partner = user.partner;
            ends += partner ? 1 : 0;
            if (partner && (partner->partner != &user || partner == &user || !user.LoggedOn() || user.ended))
                std::abort();
            if (partner && user.opener == partner->opener)
                std::abort();
            if (user.LoggedOn() && mExchange.Users().Find(user.id) != &user)
                std::abort();
        }
        if (ends != 2 * mExchange.Pipes())
            std::abort();
    }

    RelayLimits mLimits{.users = 3};  // one fewer than there are clients
    std::ostringstream mText;
    RelayLog mLog{mText, RelayLog::Stamp::None};
    double mNow = 0;
    Exchange mExchange;
    std::array<std::unique_ptr<Client>, 4> mClients;
};

}  // namespace
}  // namespace fenrik

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fenrik::FuzzSteps steps({reinterpret_cast<const char*>(data), size});
    const auto consent = fenrik::Consent(steps.Byte() % 3);
    fenrik::Room(consent).Run(steps);
    return 0;
}
