#pragma once

#include "options/PortScan.h"

#include <QListWidget>

#include <functional>
#include <vector>

namespace fenrik {

/// A list of serial ports, each with its device beside it. A row's item data is the port's number.
class PortList : public QListWidget {
    Q_OBJECT

public:
    static constexpr int kDeviceRole = Qt::UserRole + 3;

    explicit PortList(QWidget* parent = nullptr);

    /// Shows `rows` and selects none of them. `device` tells the device of a port's number.
    void Fill(const std::vector<PortRow>& rows, const std::function<QString(int)>& device);

    /// Selects the last row of that port, so that a plain row goes before the one of the transceiver on USB; no row if
    /// there is none.
    void SelectPort(int number);

    /// Row of the selection, -1 for none; and its port, 0 for none.
    [[nodiscard]] int SelectedRow() const;
    [[nodiscard]] int SelectedPort() const;

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace fenrik
