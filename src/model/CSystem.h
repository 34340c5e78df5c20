#pragma once

#include "model/CNode.h"
#include "model/Collection.h"
#include "model/SystemOwner.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <optional>

namespace fenrik {

class Boxes;
struct NodeLink;
struct Settings;

/// The vehicle network as the tool knows it: its nodes, counted from 1, which of them are alive, which one the user
/// has selected, and which one is mounted. Owns the nodes.
///
/// Made once with the main window and rebuilt in place by Clear and LoadSystem, which leave the numbers of the
/// selected and the mounted node alone; so either may point outside the list, and then there is no such node.
class CSystem {
public:
    /// `settings` gives the node count of a system without files and takes the name of a saved one. `programFolder`,
    /// where systems are saved, has no separator at its end. `owner` may be absent. Settings and owner outlive the
    /// system.
    CSystem(Settings& settings, const QString& programFolder, SystemOwner* owner = nullptr);
    CSystem(const CSystem&) = delete;
    CSystem& operator=(const CSystem&) = delete;

    [[nodiscard]] SystemOwner* Owner() const { return mOwner; }

    /// The nodes' way to the network; nothing while there is none. `link` outlives the system or is taken away.
    [[nodiscard]] const NodeLink* Link() const { return mLink; }
    void setLink(const NodeLink* link) { mLink = link; }

    /// No nodes and no name.
    void Clear();

    [[nodiscard]] const QString& Name() const { return mName; }
    /// A named system was loaded.
    [[nodiscard]] bool Defined() const { return mDefined; }
    /// Folder of the system, with a separator at its end.
    [[nodiscard]] const QString& path() const { return mPath; }
    /// Full path of the command database in use.
    [[nodiscard]] const QString& Database() const { return mDatabase; }

    /// Something was learnt of a node that is not saved.
    [[nodiscard]] bool Dirty() const { return mDirty; }
    void setDirty() { mDirty = true; }

    [[nodiscard]] std::int16_t NodesInSystem() const { return std::int16_t(mNodes.Count()); }
    /// Drops nodes from the end or adds new ones there; the others keep their state.
    void setNodesInSystem(std::int16_t count);

    [[nodiscard]] const Collection<CNode>& Nodes() const { return mNodes; }
    /// Node `number`, or nothing outside the list.
    [[nodiscard]] CNode* Node(int number) const { return mNodes.Find(number); }
    [[nodiscard]] std::int16_t ActiveNodeCount() const;

    /// The selected node, or nothing.
    [[nodiscard]] CNode* SelectedNode() const { return mNodes.Find(mSelectedNodeNumber); }
    void setSelectedNode(const CNode* node) { setSelectedNodeNumber(NumberOf(node)); }
    [[nodiscard]] std::int16_t SelectedNodeNumber() const { return mSelectedNodeNumber; }
    /// A node that is not active can't be selected: that selects none, 0.
    void setSelectedNodeNumber(std::int16_t number);

    /// The mounted node, or nothing.
    [[nodiscard]] CNode* MountedNode() const { return mNodes.Find(mMountedNodeNumber); }
    void setMountedNode(const CNode* node) { setMountedNodeNumber(NumberOf(node)); }
    [[nodiscard]] std::int16_t MountedNodeNumber() const { return mMountedNodeNumber; }
    void setMountedNodeNumber(std::int16_t number);

    /// The toolbar of node `number`'s button; nothing without an owner.
    [[nodiscard]] std::optional<NodeBar> TargetNodebar(int number) const;
    /// The button of node `number`; nothing without an owner or outside 1 to 32.
    [[nodiscard]] std::optional<NodeButton> TargetNodeButton(int number) const;

    /// The node was heard. A number outside the list is ignored.
    void ActivateNode(int number);

    /// The node does not answer any more; what depends on its presence is forgotten. A mount of it stays: ending
    /// that takes traffic, which is the caller's business.
    void DeActivateNode(int number);

    void SelectNode(std::uint8_t nodeNumber);
    void DeselectNode();

    void MountNode(std::uint8_t nodeNumber) { setMountedNodeNumber(nodeNumber); }
    void UnmountNode() { setMountedNodeNumber(0); }

    /// Rebuilds the system from the node images `PathOnly` + `SystemName` + "*.bin", or, if either text is empty,
    /// as a nameless one of as many nodes as the settings say. Files that are no image are left out.
    /// `Quickie` takes only the node's number and the system's node count from an image; otherwise everything is
    /// taken, names included. Behind the images comes the saved system of that name in that folder, if there is one;
    /// it is the command database as well.
    void LoadSystem(const QString& SystemName, const QString& PathOnly, bool Quickie);

    /// Asks for a name and saves the system under it in the program's folder. `Response` 4 first asks whether to, if
    /// something was learnt that is not saved; 6 is a yes; it becomes the answer, 6 or 7. Saving does not end what was
    /// learnt from counting as not saved. True if all of it was saved; what failed was told in boxes. Without a link
    /// there is nobody to ask, and nothing happens.
    bool SaveSystem(std::int32_t& Response);

    /// Takes over what the saved system in the file `FileName` has. See SystemDatabase::Load.
    void LoadSystemDatabase(const QString& FileName, std::uint8_t& pNodesInSystem, bool Quickie);

private:
    [[nodiscard]] bool MakeSystemDatabase(const QString& Name);
    void TakeSavedName(const QString& name);
    [[nodiscard]] Boxes* UserBoxes() const;
    [[nodiscard]] static std::int16_t NumberOf(const CNode* node);
    void AddNodesUpTo(int count);
    void PlaceNodes(Collection<CNode>& found, int count);
    void ShowNodes();
    void SetButtonPressed(int number, bool pressed);
    void RefreshButtonIcon(int number);

    Settings& mSettings;
    QString mProgramFolder;
    SystemOwner* mOwner;
    const NodeLink* mLink = nullptr;
    bool mDirty = false;
    QString mName;
    bool mDefined = false;
    QString mPath;
    QString mDatabase;
    std::int16_t mSelectedNodeNumber = 0;
    std::int16_t mMountedNodeNumber = 0;
    Collection<CNode> mNodes;
};

}  // namespace fenrik
