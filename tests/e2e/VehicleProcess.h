#pragma once

#include "e2e/PortableCopy.h"

#include <QProcess>

#include <string>
#include <vector>

namespace fenrik {

/// The simulated vehicle as a program of its own, on COM5 of a copy.
class VehicleProcess {
public:
    /// A line of the simulator's log, without its time.
    struct Entry {
        QString what;     ///< "RX", "TX", "--"
        QString bytes;    ///< "00 AE 14 00 03 C5", or the text of a note
        QString meaning;  ///< "901 state=0 ext=0 data=3"

        [[nodiscard]] int Field(const char* name) const;  ///< "data"
    };

    explicit VehicleProcess(const PortableCopy& copy) : mCopy(copy) {}
    ~VehicleProcess();
    VehicleProcess(const VehicleProcess&) = delete;
    VehicleProcess& operator=(const VehicleProcess&) = delete;

    /// Starts on COM5 with these statements as its scenario, and more options; fails the test if the vehicle does not
    /// get ready.
    void Start(const char* scenario, const QStringList& options = {});

    /// The same as a modem on COM6.
    void StartAsModem(const char* scenario);

    /// The same as the user Bob of a relay; `answer` is one of "--grant", "--deny", "--ask".
    void StartAtRelay(const QString& relay, const char* answer, const char* scenario);

    /// Carries out one statement; fails the test if the simulator objects.
    void Control(const char* statement);

    /// What the log says by now.
    [[nodiscard]] std::vector<Entry> Log() const;

    /// The meanings of all frames and bytes of that kind, in order.
    [[nodiscard]] std::vector<std::string> Meanings(const char* what) const;

    [[nodiscard]] bool HasNote(const char* text) const;

    /// Ends the vehicle as a user does; gives its exit code.
    int End();

private:
    void Start(const QStringList& arguments, const char* scenario);
    [[nodiscard]] QByteArray ReadLine();

    const PortableCopy& mCopy;
    QProcess mProcess;
};

}  // namespace fenrik
