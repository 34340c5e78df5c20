#pragma once

#include "options/PortScan.h"

#include <QObject>

#include <functional>

class QComboBox;
class QLineEdit;

namespace fenrik {

class PortList;
struct Settings;

/// Port, speed and initialization of the modem.
class ModemChoice : public QObject {
    Q_OBJECT

public:
    struct Controls {
        PortList& ports;
        QComboBox& baudRate;
        QLineEdit& initString;
    };

    /// All outlive the object.
    ModemChoice(const Controls& controls, Settings& settings, QObject* parent);

    void Show(const PortConditions& ports, const std::function<QString(int)>& device);

    /// Chooses the port that a detection has found, if it is in the list.
    void SelectPort(int number);

    /// Takes over the initialization string.
    void Apply();

private:
    void TakePort();

    Controls mControls;
    Settings& mSettings;
};

}  // namespace fenrik
