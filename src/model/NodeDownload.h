#pragma once

#include "model/DownloadProgress.h"

#include <QString>

#include <cstdint>
#include <functional>

namespace fenrik {

class CNode;
class NodeQueries;
struct NodeInfoReply;

/// Fills a node from one of its sources and shows how far it is. Nothing is rolled back: what was read before a
/// failure stays. A road that works for a node is kept in its iProtocol:
///
///   source                      road
///   saved system (".dav")       CNode::LoadSystemDatabase and nothing else
///   node image file             memory road, nothing is sent
///   node with VFlashSupport     structure test, and the variable flash road if it holds; nothing else on this call
///   iProtocol 2                 memory road over the network
///   iProtocol 1                 query road, also if the first query fails
///   iProtocol 0                 query road; after a failure of the first query the memory road, for good
///
/// A download can be started for a node without a link only from a file.
class NodeDownload {
public:
    NodeDownload(CNode& node, bool getNames);

    /// An empty `fileName` is the network. A file that is neither a saved system nor a node image ends the call without
    /// a word. Errors go to the link's error reporter.
    void Run(const QString& fileName, std::uint8_t& nodesInSystem);

    /// Steps that a download of the node is announced with.
    [[nodiscard]] static int Steps(const CNode& node, bool getNames);

private:
    void RunGuarded(const QString& fileName, std::uint8_t& nodesInSystem);
    void ReadFile(const QString& fileName, std::uint8_t& nodesInSystem);
    void ReadNetwork(std::uint8_t& nodesInSystem);
    void ReadMounted(std::uint8_t& nodesInSystem);
    void ReadVariableFlash();
    void TakeRoad(std::uint8_t& nodesInSystem);
    [[nodiscard]] bool IsMounted() const;
    [[nodiscard]] bool GoByQueries(NodeQueries& queries, NodeInfoReply& info);
    void Finish(const std::function<void()>& road);
    void TellWhy(DownloadEnded::Why why);
    void ShowFailure(const QString& text, const QString& title, bool question);

    CNode& mNode;
    bool mGetNames;
    DownloadProgress mProgress;
};

}  // namespace fenrik
