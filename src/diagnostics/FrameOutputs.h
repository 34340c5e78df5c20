#pragma once

#include "diagnostics/KeptFocus.h"
#include "diagnostics/OutputTexts.h"
#include "diagnostics/PointTreeModel.h"
#include "diagnostics/RelationshipTerms.h"
#include "diagnostics/TreePlace.h"

#include <QGroupBox>

#include <memory>

namespace Ui {
class FrameOutputs;
}

namespace fenrik {

class OutputBar;
class RelationModel;

/// What the frame shows of the output in focus.
struct OutputDetails {
    QString shed;
    QString flashing;
    OutputTexts::Timing timing;
    QString fault;
    bool faulty = false;
};

/// The page of the output view: tree, buttons, values of the output in focus, terms of the level in focus, and the
/// control that forces the output. Shows what it is told and says what the user does.
class FrameOutputs : public QGroupBox {
    Q_OBJECT

public:
    explicit FrameOutputs(QWidget* parent = nullptr);
    ~FrameOutputs() override;

    void SetCaption(const QString& caption);

    /// Only these words, in place of everything else.
    void ShowWords(const QString& words);
    void ShowPanel(bool downloaded);
    /// When everything of `node` is shown: what the user had open of it is open again, and the keyboard is back.
    void RestorePlace(int node);
    /// Empties tree, buttons and terms and hides them.
    void Clear();

    [[nodiscard]] PointTreeModel& Tree() { return *mTree; }
    [[nodiscard]] OutputBar& Buttons();

    /// Selects the row of `number`, 0 for none, unless it or one of its levels is selected already.
    void SelectOutput(int number);

    void ShowDetails(const OutputDetails& details);
    /// What belongs to the whole output and not to one of its levels reads "Unavailable".
    void ShowNoWholeValues();
    void ClearFlashingAndFaults();
    void SetTerms(const QList<TermRow>& rows);

    /// Without a list to choose from the control is hidden. `pwmKind` is the output's PWMKind.
    void HideControl();
    void ShowControl();
    void FillLevels(int pwmKind);
    void SetLevel(const QString& level);
    [[nodiscard]] QString Level() const;
    void FocusLevel();

Q_SIGNALS:
    void NodeClicked(const QString& key, const QString& tag);
    void ButtonClicked(int number, bool pressed);
    void ForceClicked();
    /// A double click on a command among the terms.
    void CommandChosen(int command, const QString& op);

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SetUpTree();
    void SetUpControl();
    void SetUpRelations();
    void ReportNode(const QModelIndex& index);
    void ReportTerm(const QModelIndex& index);
    void FitOpColumn();
    void PaintFault();

    std::unique_ptr<Ui::FrameOutputs> mUi;
    TreePlace mPlace;
    KeptFocus mFocus;
    PointTreeModel* mTree;      // owned by the frame
    RelationModel* mRelations;  // owned by the frame
    bool mSelecting = false;    // the selection changes by program
    bool mFaulty = false;
};

}  // namespace fenrik
