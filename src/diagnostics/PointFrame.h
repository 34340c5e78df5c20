#pragma once

#include "diagnostics/KeptFocus.h"
#include "diagnostics/PointTreeModel.h"
#include "diagnostics/TreePlace.h"

#include <QGroupBox>

class QLabel;
class QTreeView;

namespace fenrik {

/// What the pages of the input view and of the output view have in common: a panel with the tree of a node's points,
/// or words in place of it. Shows what it is told and says what the user does.
class PointFrame : public QGroupBox {
    Q_OBJECT

public:
    void SetCaption(const QString& caption);

    /// Only these words, in place of everything else.
    void ShowWords(const QString& words);
    void ShowNoNode();
    void ShowPanel(bool downloaded);
    /// When everything of `node` is shown: the tree is as the user had it, and the keyboard is back.
    void RestorePlace(int node);

    [[nodiscard]] PointTreeModel& Tree() { return *mTree; }

Q_SIGNALS:
    /// The user went to a row; `key` and `tag` are its KeyRole and TagRole.
    void NodeClicked(const QString& key, const QString& tag);

protected:
    /// What both pages have; the page owns them.
    struct Parts {
        QLabel* words = nullptr;
        QWidget* panel = nullptr;
        QWidget* notDownloaded = nullptr;  ///< tells that the points were not read yet
        QTreeView* tree = nullptr;
    };

    /// `tag` is that of the points in the tree.
    PointFrame(const QString& tag, QWidget* parent);

    /// Comes first, as soon as the parts are made.
    void SetUpPoints(const Parts& parts);

    /// Empties the tree and hides the panel.
    void ClearPoints();

    /// Selects the row of `number`, 0 for none, unless it or one of its levels is selected already.
    void SelectPoint(int number);

private:
    void ReportNode(const QModelIndex& index);

    Parts mParts;
    TreePlace mPlace;
    KeptFocus mFocus;
    PointTreeModel* mTree;    // owned by the frame
    bool mSelecting = false;  // the selection changes by program
};

}  // namespace fenrik
