#pragma once

#include <QString>

namespace fenrik {

class CNode;
class DownloadProgress;
class NodeQueries;
struct NodeInfoReply;

/// Reads a node's configuration by structured queries.
class QueryRoad {
public:
    QueryRoad(CNode& node, NodeQueries& queries, bool getNames, DownloadProgress& progress)
        : mNode(node), mQueries(queries), mGetNames(getNames), mProgress(progress)
    {
    }

    /// `info` is what the node just said of itself. Throws DownloadEnded.
    void Run(const NodeInfoReply& info);

private:
    void ReadName(const NodeInfoReply& info);
    void ReadInputs();
    void ReadOutputs();
    void ReadRelationship(int number);
    void ReadInputNames();
    void ReadOutputNames();
    [[nodiscard]] QString ReadText(int reference, const QString& otherwise);

    /// A closed link answers every query with nothing, at once; what the node holds must not become that nothing.
    void ThrowIfClosed() const;

    CNode& mNode;
    NodeQueries& mQueries;
    bool mGetNames;
    DownloadProgress& mProgress;
};

}  // namespace fenrik
