#pragma once

#include <QString>

#include <exception>

namespace fenrik {

/// Numbers that the error reporter and the connect handler know. All others come from the operating system
/// or the database engine.
namespace ErrorNumber {
inline constexpr int kOverflow = 6;
inline constexpr int kSubscriptOutOfRange = 9;
inline constexpr int kTypeMismatch = 13;
inline constexpr int kFileNotFound = 53;
inline constexpr int kPermissionDenied = 70;
inline constexpr int kPathFileAccess = 75;
inline constexpr int kDuplicateKey = 457;        ///< a collection has an element of that key already
inline constexpr int kPortNotFound = 8002;       ///< no such serial port
inline constexpr int kPortAlreadyOpen = 8005;    ///< another program (or a second copy of this one) has the port
inline constexpr int kSetCommState = 8012;       ///< the device refuses the line parameters
inline constexpr int kPortNotOpen = 8018;        ///< an operation that needs an open port
inline constexpr int kDatabaseNotFound = 3024;   ///< the database file does not exist
inline constexpr int kDatabaseBroken = 3343;     ///< the file is no database, or a damaged one
inline constexpr int kTableNotFound = 3078;      ///< a query names a table that is not there
inline constexpr int kItemNotFound = 3265;       ///< no such column, table definition or property
inline constexpr int kNoCurrentRecord = 3021;    ///< a field is read at the end of a recordset
inline constexpr int kDatabaseReadOnly = 3027;   ///< a write to a database that was opened for reading
inline constexpr int kDatabaseStatement = 3075;  ///< a statement that the engine does not understand
}  // namespace ErrorNumber

/// The one exception of the program: a number of ErrorNumber and a text for people.
/// A failed exchange on the network is no error; it returns nothing.
class Error : public std::exception {
public:
    Error(int number, const QString& description)
        : mNumber(number), mDescription(description), mWhat(description.toStdString())
    {
    }

    [[nodiscard]] int Number() const { return mNumber; }
    [[nodiscard]] const QString& Description() const { return mDescription; }
    [[nodiscard]] const char* what() const noexcept override { return mWhat.c_str(); }

private:
    int mNumber;
    QString mDescription;
    std::string mWhat;
};

}  // namespace fenrik
