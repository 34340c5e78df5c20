#pragma once

#include "diagnostics/PointFrame.h"

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

/// The page of the input view: tree, and values of the input in focus.
class FrameInputs : public PointFrame {
    Q_OBJECT

public:
    explicit FrameInputs(QWidget* parent = nullptr);
    ~FrameInputs() override;

    void Clear() { ClearPoints(); }
    void SelectInput(int number) { SelectPoint(number); }
    void ShowDetails(const InputDetails& details);

private:
    std::unique_ptr<Ui::FrameInputs> mUi;
};

}  // namespace fenrik
