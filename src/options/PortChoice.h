#pragma once

#include "options/PortScan.h"

#include <QObject>

#include <functional>

class QLineEdit;

namespace fenrik {

class Boxes;
class ErrorReporter;
class PortList;
struct RunState;
struct Settings;

/// The transceiver's port, chosen from the list of ports or entered as a number: the list ends at 16, the system's
/// ports need not.
class PortChoice : public QObject {
    Q_OBJECT

public:
    static constexpr int kHighest = 255;

    struct Controls {
        PortList& list;
        QLineEdit& number;
    };

    /// All outlive the object.
    PortChoice(const Controls& controls, Settings& settings, RunState& run, QObject* parent);

    /// Fills the list; a transceiver on USB stands first. Selects the port `open` if the program has one open, else
    /// the port of the settings.
    void Show(const PortConditions& ports, const std::function<QString(int)>& device, int open);

    /// False if the entered number is none, which the user is told.
    [[nodiscard]] bool Check(Boxes& boxes, ErrorReporter& errors);

    /// Takes over a number that was entered, if it is one.
    void Apply();

private:
    void TakeRow();
    void SelectRowOf(const QString& number);

    Controls mControls;
    Settings& mSettings;
    RunState& mRun;
};

}  // namespace fenrik
