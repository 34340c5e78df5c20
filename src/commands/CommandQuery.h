#pragma once

#include <QString>

#include <optional>

namespace fenrik {

class CMsgHandler;
class CSystem;
struct CMessage;

/// What a command query tells while it runs. Called between its waits.
class CommandQueryHost {
public:
    virtual ~CommandQueryHost() = default;
    [[nodiscard]] virtual bool PortOpenForTx() const = 0;
    virtual void AddStep(const QString& line) = 0;     ///< of interest to who wants to know every step
    virtual void AddLine(const QString& line) = 0;     ///< an error or the result
    virtual void ShowResult(const QString& text) = 0;  ///< "ON", "OFF" or "UNKNOWN"
};

/// Asks a node whether it believes that a command is on. Only a mounted node tells, so the node is mounted for the
/// question, and the mounts are put back behind it. An error ends the query where it stands and puts nothing back,
/// except for the question itself, whose missing answer is a result.
///
///   command  state  data      reply
///   901             node      902, data = node or 12345
///   905      0      node      903, whatever it says: unmounted
///   905      1      node      903, whatever it says: mounted
///   920      1      command   950, data = 0 off, 1 on
class CommandQuery {
public:
    /// All references outlive the query.
    CommandQuery(CMsgHandler& handler, CSystem& system, CommandQueryHost& host);

    /// Asks `node` for command `number`, which the report calls `name`. Waits; the port may go away meanwhile, which
    /// counts as no reply.
    void Run(int node, int number, const QString& name);

private:
    void RunSteps(int node, int number, const QString& name);
    [[nodiscard]] bool MakeReady(int node, int earlier);
    [[nodiscard]] bool Ping(int node);
    [[nodiscard]] bool Release(int node);
    [[nodiscard]] bool Mount(int node);
    void AskForState(int node, int number, const QString& name);
    std::optional<CMessage> Ask(int command, bool state, int data, int reply, int tries);

    CMsgHandler& mHandler;
    CSystem& mSystem;
    CommandQueryHost& mHost;
};

}  // namespace fenrik
