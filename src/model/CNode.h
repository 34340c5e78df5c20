#pragma once

#include "model/CDigitalInput.h"
#include "model/COutput.h"
#include "model/Collection.h"
#include "model/HeaderRecord.h"
#include "model/NodeTypes.h"
#include "model/SaveStep.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <cstdint>
#include <vector>

namespace fenrik {

class CSystem;
class Database;
class NodeImage;
struct CommandSet;
struct FlashPattern;
struct NodeInfoReply;
struct NodeLink;
struct RelationshipLevel;
struct SleepSettings;

/// One node of the vehicle network, as far as the tool knows it. Lives in the `Nodes` of a system; a node that was
/// not placed yet has number 0 and no parent.
///
/// The queries speak to the mounted node, whichever object they are called on: the frames have no address. Without
/// a link to the network in the parent system they ask nothing and give nothing.
class CNode {
public:
    static constexpr std::int16_t kUnknownType = NodeTypes::kUnknown;
    static constexpr int kLoadShedLevels = 8;

    /// Ways of reading a node's configuration, as `iProtocol` holds them.
    static constexpr std::int16_t kProtocolUnknown = 0;
    static constexpr std::int16_t kProtocolQueries = 1;
    static constexpr std::int16_t kProtocolImage = 2;

    /// Sources of GetData.
    static constexpr int kFromFile = 1;
    static constexpr int kFromRelay = 2;
    static constexpr int kFromNode = 3;

    CNode();
    ~CNode();
    CNode(const CNode&) = delete;
    CNode& operator=(const CNode&) = delete;

    /// Places the node; everything else stays. `parent` owns the node and outlives it.
    void Init(CSystem& parent, std::uint8_t number);

    /// "Node " and the number: the node's key in `Nodes`.
    [[nodiscard]] QString key() const { return QStringLiteral("Node %1").arg(mNumber); }

    /// The node answered on the network.
    [[nodiscard]] bool Active() const { return mActive; }
    void setActive(bool active) { mActive = active; }

    [[nodiscard]] bool Defined() const { return mDefined; }
    void setDefined(bool defined) { mDefined = defined; }

    [[nodiscard]] const QString& Name() const { return mName; }
    /// Marks the system as changed, also when the name is the old one.
    void setName(const QString& name);

    /// Number on the network, 1 to 32; 0 for a node that was not placed yet.
    [[nodiscard]] std::uint8_t number() const { return mNumber; }
    void setNumber(std::uint8_t number) { mNumber = number; }

    /// Version of the node's operating software; 0.0 while it is not known. A change marks the system as changed.
    [[nodiscard]] std::uint8_t osMajVersion() const { return mOsMajVersion; }
    [[nodiscard]] std::uint8_t osMinVersion() const { return mOsMinVersion; }
    void setOsMajVersion(std::uint8_t version) { SetVersion(mOsMajVersion, version); }
    void setOsMinVersion(std::uint8_t version) { SetVersion(mOsMinVersion, version); }

    /// The network was asked for the node's type, with or without an answer.
    [[nodiscard]] bool Verified() const { return mVerified; }
    void setVerified(bool verified) { mVerified = verified; }

    [[nodiscard]] std::int16_t typeID() const { return mTypeID; }
    /// Takes everything that follows from the type and makes all inputs and outputs anew, without what they held.
    /// The present type again does nothing at all; a number without a type becomes kUnknownType.
    void setTypeID(std::int16_t typeID);

    /// The node's points, by number, under the keys "Input n" and "Output n".
    [[nodiscard]] const Collection<CDigitalInput>& CDigitalInputs() const { return mInputs; }
    [[nodiscard]] const Collection<COutput>& COutputs() const { return mOutputs; }
    void ClearCollections();

    /// Key of the picture on the node's button: "Node5", "Node5M" while the node is mounted, "Blank" for a number
    /// that the system does not have.
    [[nodiscard]] QString NodeBarIconName() const;

    [[nodiscard]] QString TypeName() const { return QLatin1String(mType->TypeName); }
    [[nodiscard]] bool Refreshable() const { return mType->Refreshable; }
    [[nodiscard]] bool OutputDelay() const { return mType->OutputDelay; }
    [[nodiscard]] std::int16_t Inputs() const { return mType->Inputs; }
    [[nodiscard]] std::int16_t Outputs() const { return mType->Outputs; }
    [[nodiscard]] std::int16_t bits_per_input() const { return mBitsPerInput; }
    [[nodiscard]] QString DiagInputLabel() const { return QLatin1String(mType->DiagInputLabel); }
    [[nodiscard]] QString DiagOutputLabel() const { return QLatin1String(mType->DiagOutputLabel); }
    [[nodiscard]] const MemoryMap& Map() const { return *mType->map; }

    /// The node may carry a variable flash structure; cleared by a download that finds none.
    [[nodiscard]] bool VFlashSupport() const { return mVFlashSupport; }
    void setVFlashSupport(bool support) { mVFlashSupport = support; }

    /// Which way of reading this node works: one of the kProtocol values.
    [[nodiscard]] std::int16_t iProtocol() const { return mProtocol; }
    void setIProtocol(std::int16_t protocol) { mProtocol = protocol; }

    /// The header was read in full and need not be asked for again.
    [[nodiscard]] bool HeaderInfoAvailable() const { return mHeaderInfoAvailable; }
    void setHeaderInfoAvailable(bool available) { mHeaderInfoAvailable = available; }
    [[nodiscard]] const HeaderRecord& Header() const { return mHeader; }
    void setHeader(const HeaderRecord& header) { mHeader = header; }

    [[nodiscard]] const QString& PICVersion() const { return mPicVersion; }
    void setPICVersion(const QString& version) { mPicVersion = version; }
    [[nodiscard]] const QString& FPGAVersion() const { return mFpgaVersion; }
    void setFPGAVersion(const QString& version) { mFpgaVersion = version; }
    [[nodiscard]] const QString& osBetaVersion() const { return mOsBetaVersion; }
    void setOsBetaVersion(const QString& version) { mOsBetaVersion = version; }

    /// Marks the parent system as changed; a node without a parent has nothing to mark.
    void isDirty();

    /// Whether the node takes the newer form of the force command. For a type 2, asks the mounted node for its
    /// version while that is not known.
    [[nodiscard]] bool NewDPWMCCompatible();

    /// Voltage below which outputs of load-shed `level`, 1 to 8, are switched off. Throws Error 9 outside.
    [[nodiscard]] static Fixed4 LoadShedVoltage(int level);

    /// References of the node's name and comment and eight bytes more, as GetNodeInfo found them.
    [[nodiscard]] std::int32_t NodeNameRef() const { return mNameRef; }
    [[nodiscard]] std::int32_t CommentsRef() const { return mCommentRef; }
    [[nodiscard]] const std::array<std::uint16_t, 8>& ExtraInfo() const { return mExtraInfo; }

    /// Stores what a node said of itself; the type goes past the setter, so that the points stay.
    void TakeNodeInfo(const NodeInfoReply& info);

    /// As setName, without marking the system: a download marks it once, at its end, and not for a file.
    void TakeDownloadedName(const QString& name) { mName = name; }

    /// Takes a version from a saved system, without marking the system.
    void TakeSavedVersion(std::uint8_t major, std::uint8_t minor);

    /// Takes over what the saved system in the file `Path` has of this node; writes the node there. See NodeTable.
    void LoadSystemDatabase(const QString& Path);
    void LoadSystemDatabase(Database& database);
    [[nodiscard]] SaveResult MakeSystemDatabase(const QString& Path);
    [[nodiscard]] SaveResult MakeSystemDatabase(Database& database);

    /// Fills the node from `FileName`, a node image ("*.bin") or a saved system ("*.dav"), or from the network if
    /// that is empty. See NodeDownload. `NodesInSystem` grows to the node count that the node's memory names.
    void ReadNode(const QString& FileName, std::uint8_t& NodesInSystem, bool GetNames);

    // The queries; NodeQueries tells what each asks and NodeReplies what the answers look like.

    /// Number of bytes received, below 0 after a failure. Without a reply the results are 0, 0, 254 and 0.
    int GetNodeInfo(std::int32_t& NodeNameRef, std::int32_t& CommentsRef, std::int16_t& nodetype,
                    std::uint8_t& NodePosition);
    std::vector<CommandSet> GetCommandSets(int Index);
    QString GetString(int StringRef);
    void GetInputInfo(int InputIndex);
    void GetOutputInfo(int OutputIndex);
    /// Ends in 255; empty without a reply.
    QByteArray GetRelationship(int RelationshipRef);
    std::vector<std::uint16_t> GetListOfIndexes(int ListRef);
    RelationshipLevel GetRelationshipLevel(int RelationshipLevelRef);
    void GetAnalogThreshold(int ThresholdIndex);
    FlashPattern GetFlashPattern(int FlashPatternIndex);
    std::vector<std::uint16_t> GetAnalogCommands();
    SleepSettings GetSleepSettings();
    std::vector<std::uint8_t> GetNodeSpecificProperties();

    /// One byte at `position` (from 1) of the node's memory: of the open image file with mode 1, over the network
    /// with mode 2 or 3. False, and 0, if it can't be had.
    bool GetData(int mode, int position, std::uint8_t& value);

    /// The image that GetData reads while a download from a file runs; null otherwise. `image` stays with the caller.
    void setNodeFile(const NodeImage* image) { mNodeFile = image; }

    /// The way to the network, or nothing.
    [[nodiscard]] const NodeLink* Link() const;
    [[nodiscard]] CSystem* Parent() const { return mParent; }

private:
    void MakePoints();
    void SetVersion(std::uint8_t& stored, std::uint8_t version);

    CSystem* mParent = nullptr;
    bool mDefined = false;
    bool mActive = false;
    bool mVerified = false;
    QString mName;
    std::uint8_t mNumber = 0;
    std::int16_t mTypeID = kUnknownType;
    const NodeType* mType;
    std::int16_t mBitsPerInput = 0;
    bool mVFlashSupport = false;
    Collection<CDigitalInput> mInputs;
    Collection<COutput> mOutputs;
    std::uint8_t mOsMajVersion = 0;
    std::uint8_t mOsMinVersion = 0;
    std::int16_t mProtocol = kProtocolUnknown;
    bool mHeaderInfoAvailable = false;
    HeaderRecord mHeader;
    QString mPicVersion;
    QString mFpgaVersion;
    QString mOsBetaVersion;
    std::int32_t mNameRef = 0;
    std::int32_t mCommentRef = 0;
    std::array<std::uint16_t, 8> mExtraInfo{};
    const NodeImage* mNodeFile = nullptr;
};

}  // namespace fenrik
