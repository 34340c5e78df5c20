#include "platform/SqliteStatement.h"

#include "platform/Error.h"

#include <QByteArray>

#include <sqlite3.h>

namespace fenrik {

namespace {

// In the engine's own steps, of which a row takes about ten: a fraction of a second. The tool's largest query needs a
// hundredth of that.
constexpr int kMostSteps = 10'000'000;
constexpr int kLongestValue = 16 << 20;  // bytes

// The engine has one code for all faults of a statement's text; only its message tells them apart.
int NumberOfStatementError(const QString& message)
{
    if (message.startsWith(QLatin1String("no such table")))
        return ErrorNumber::kTableNotFound;
    if (message.startsWith(QLatin1String("no such column")))
        return ErrorNumber::kItemNotFound;
    return ErrorNumber::kDatabaseStatement;
}

int NumberOf(int code, const QString& message)
{
    switch (code & 0xFF) {  // the upper bytes only refine the code
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
    case SQLITE_INTERRUPT:
    case SQLITE_TOOBIG:
        return ErrorNumber::kDatabaseBroken;
    case SQLITE_READONLY:
        return ErrorNumber::kDatabaseReadOnly;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return ErrorNumber::kPermissionDenied;
    case SQLITE_FULL:
    case SQLITE_IOERR:
    case SQLITE_CANTOPEN:
    case SQLITE_NOMEM:
    case SQLITE_NOLFS:
        return ErrorNumber::kPathFileAccess;
    default:
        return NumberOfStatementError(message);
    }
}

QString MessageOf(sqlite3* connection, int code)
{
    if (code == SQLITE_INTERRUPT)
        return QStringLiteral("a table or query has no end");
    return QString::fromUtf8(connection ? sqlite3_errmsg(connection) : sqlite3_errstr(code));
}

}  // namespace

void LimitStatements(sqlite3* connection)
{
    // The engine calls back after that many steps of a statement, and goes on only if the answer is 0.
    sqlite3_progress_handler(
        connection, kMostSteps, [](void*) { return 1; }, nullptr);
    sqlite3_limit(connection, SQLITE_LIMIT_LENGTH, kLongestValue);
}

void ThrowEngineError(sqlite3* connection, int code)
{
    const QString message = MessageOf(connection, code);
    const int number = NumberOf(code, message);
    const char* file = connection ? sqlite3_db_filename(connection, "main") : nullptr;
    throw Error(number, file && *file ? QStringLiteral("%1 (%2)").arg(message, QString::fromUtf8(file)) : message);
}

SqliteStatement::SqliteStatement(sqlite3* connection, const QString& sql) : mConnection(connection)
{
    const QByteArray text = sql.toUtf8();
    const char* rest = nullptr;
    const int code = sqlite3_prepare_v2(connection, text.constData(), int(text.size()), &mStatement, &rest);
    if (code != SQLITE_OK)
        ThrowEngineError(connection, code);

    const bool oneStatement = mStatement && QByteArray(rest).trimmed().isEmpty();
    if (!oneStatement) {
        sqlite3_finalize(mStatement);
        throw Error(ErrorNumber::kDatabaseStatement, QStringLiteral("One statement is expected: %1").arg(sql));
    }
}

SqliteStatement::~SqliteStatement()
{
    sqlite3_finalize(mStatement);
}

void SqliteStatement::Bind(int position, const QVariant& value)
{
    int code = SQLITE_OK;
    switch (value.isNull() ? QMetaType::UnknownType : value.typeId()) {
    case QMetaType::UnknownType:
        code = sqlite3_bind_null(mStatement, position);
        break;
    case QMetaType::Bool:
        code = sqlite3_bind_int(mStatement, position, value.toBool() ? -1 : 0);
        break;
    case QMetaType::Double:
    case QMetaType::Float:
        code = sqlite3_bind_double(mStatement, position, value.toDouble());
        break;
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        code = sqlite3_bind_blob(mStatement, position, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
        break;
    }
    case QMetaType::QString: {
        const QByteArray text = value.toString().toUtf8();
        code = sqlite3_bind_text(mStatement, position, text.constData(), int(text.size()), SQLITE_TRANSIENT);
        break;
    }
    default:
        code = sqlite3_bind_int64(mStatement, position, value.toLongLong());
    }
    if (code != SQLITE_OK)
        ThrowEngineError(mConnection, code);
}

bool SqliteStatement::Step()
{
    const int code = sqlite3_step(mStatement);
    if (code != SQLITE_ROW && code != SQLITE_DONE)
        ThrowEngineError(mConnection, code);
    return code == SQLITE_ROW;
}

void SqliteStatement::Reset()
{
    sqlite3_reset(mStatement);  // repeats the result of the last step, which that step has told
}

int SqliteStatement::ColumnCount() const
{
    return sqlite3_column_count(mStatement);
}

QString SqliteStatement::ColumnName(int column) const
{
    return QString::fromUtf8(sqlite3_column_name(mStatement, column));
}

QVariant SqliteStatement::Value(int column) const
{
    switch (sqlite3_column_type(mStatement, column)) {
    case SQLITE_INTEGER:
        return qlonglong(sqlite3_column_int64(mStatement, column));
    case SQLITE_FLOAT:
        return sqlite3_column_double(mStatement, column);
    case SQLITE_TEXT: {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(mStatement, column));
        return QString::fromUtf8(text, sqlite3_column_bytes(mStatement, column));
    }
    case SQLITE_BLOB: {
        const auto* bytes = static_cast<const char*>(sqlite3_column_blob(mStatement, column));
        return QByteArray(bytes, sqlite3_column_bytes(mStatement, column));
    }
    default:
        return {};
    }
}

}  // namespace fenrik
