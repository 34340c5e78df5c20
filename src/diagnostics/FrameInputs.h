#pragma once

#include "diagnostics/KeptFocus.h"
#include "diagnostics/PointTreeModel.h"
#include "diagnostics/TreePlace.h"

#include <QGroupBox>

#include <memory>

namespace Ui {
class FrameInputs;
}

namespace fenrik {

/// What the frame shows of the input in focus.
struct InputDetails {
    QString commandName;
    QString switchType;
    QString onState;
    QString threeWay;
};

/// The page of the input view: tree, and values of the input in focus. Shows what it is told and says what the user
/// does.
class FrameInputs : public QGroupBox {
    Q_OBJECT

public:
    explicit FrameInputs(QWidget* parent = nullptr);
    ~FrameInputs() override;

    void SetCaption(const QString& caption);

    /// Only these words, in place of everything else.
    void ShowWords(const QString& words);
    void ShowPanel(bool downloaded);
    /// When everything of `node` is shown: the tree is where the user had it, and the keyboard is back.
    void RestorePlace(int node);
    /// Empties the tree and hides it.
    void Clear();

    [[nodiscard]] PointTreeModel& Tree() { return *mTree; }

    /// Selects the row of `number`, 0 for none.
    void SelectInput(int number);
    void ShowDetails(const InputDetails& details);

Q_SIGNALS:
    void NodeClicked(const QString& key);

private:
    void ReportNode(const QModelIndex& index);

    std::unique_ptr<Ui::FrameInputs> mUi;
    TreePlace mPlace;
    KeptFocus mFocus;
    PointTreeModel* mTree;    // owned by the frame
    bool mSelecting = false;  // the selection changes by program
};

}  // namespace fenrik
