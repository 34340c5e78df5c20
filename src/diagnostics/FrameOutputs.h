#pragma once

#include "diagnostics/OutputTexts.h"
#include "diagnostics/PointFrame.h"
#include "diagnostics/RelationshipTerms.h"

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
/// control that forces the output.
class FrameOutputs : public PointFrame {
    Q_OBJECT

public:
    explicit FrameOutputs(QWidget* parent = nullptr);
    ~FrameOutputs() override;

    /// Empties tree, buttons and terms and hides them.
    void Clear();

    [[nodiscard]] OutputBar& Buttons();

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
    void ButtonClicked(int number, bool pressed);
    void ForceClicked();
    /// A double click on a command among the terms.
    void CommandChosen(int command, const QString& op);

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SetUpControl();
    void SetUpRelations();
    void ReportTerm(const QModelIndex& index);
    void FitOpColumn();
    void PaintFault();

    std::unique_ptr<Ui::FrameOutputs> mUi;
    RelationModel* mRelations;  // owned by the frame
    bool mFaulty = false;
};

}  // namespace fenrik
