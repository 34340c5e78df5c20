#pragma once

#include "model/HeaderRecord.h"
#include "model/NodeType.h"

#include <QString>

#include <cstdint>

namespace fenrik {

class CSystem;

/// One node of the vehicle network, as far as the tool knows it. Lives in the `Nodes` of a system; a node that was
/// not placed yet has number 0 and no parent.
class CNode {
public:
    static constexpr std::int16_t kUnknownType = 254;
    static constexpr int kLoadShedLevels = 8;

    /// Ways of reading a node's configuration, as `iProtocol` holds them.
    static constexpr std::int16_t kProtocolUnknown = 0;
    static constexpr std::int16_t kProtocolQueries = 1;
    static constexpr std::int16_t kProtocolImage = 2;

    CNode() = default;
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
    void setTypeID(std::int16_t typeID) { mTypeID = typeID; }

    /// Key of the picture on the node's button: "Node5", "Node5M" while the node is mounted, "Blank" for a number
    /// that the system does not have.
    [[nodiscard]] QString NodeBarIconName() const;

    [[nodiscard]] const QString& TypeName() const { return mType.TypeName; }
    [[nodiscard]] bool Refreshable() const { return mType.Refreshable; }
    [[nodiscard]] bool OutputDelay() const { return mType.OutputDelay; }
    [[nodiscard]] std::int16_t Inputs() const { return mType.Inputs; }
    [[nodiscard]] std::int16_t Outputs() const { return mType.Outputs; }
    [[nodiscard]] std::int16_t bits_per_input() const { return mType.bits_per_input; }
    [[nodiscard]] const QString& DiagInputLabel() const { return mType.DiagInputLabel; }
    [[nodiscard]] const QString& DiagOutputLabel() const { return mType.DiagOutputLabel; }

    /// The node may carry a variable flash structure; cleared by a download that finds none.
    [[nodiscard]] bool VFlashSupport() const { return mType.VFlashSupport; }
    void setVFlashSupport(bool support) { mType.VFlashSupport = support; }

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

    /// Whether the node takes the newer form of the force command. Asks the network for the version of a type 2
    /// whose version is not known.
    [[nodiscard]] bool NewDPWMCCompatible() const;

    /// Voltage below which outputs of load-shed `level`, 1 to 8, are switched off. Throws Error 9 outside.
    [[nodiscard]] static double LoadShedVoltage(int level);

private:
    void SetVersion(std::uint8_t& stored, std::uint8_t version);

    CSystem* mParent = nullptr;
    bool mDefined = false;
    bool mActive = false;
    bool mVerified = false;
    QString mName;
    std::uint8_t mNumber = 0;
    std::int16_t mTypeID = kUnknownType;
    NodeType mType;
    std::uint8_t mOsMajVersion = 0;
    std::uint8_t mOsMinVersion = 0;
    std::int16_t mProtocol = kProtocolUnknown;
    bool mHeaderInfoAvailable = false;
    HeaderRecord mHeader;
    QString mPicVersion;
    QString mFpgaVersion;
    QString mOsBetaVersion;
};

}  // namespace fenrik
