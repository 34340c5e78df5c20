#include "platform/Database.h"

#include "platform/CFileSystem.h"
#include "platform/Error.h"
#include "platform/JetFile.h"
#include "platform/Recordset.h"
#include "platform/SqliteCopy.h"
#include "platform/SqliteStatement.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

namespace fenrik {

namespace {

constexpr int kHeaderSize = 100;
constexpr qint64 kLargestJetFile = 256 << 20;  // it is read into memory, and those of this tool have a few megabytes

bool IsSqliteHeader(const QByteArray& header)
{
    return header.startsWith(QByteArrayLiteral("SQLite format 3\0"));
}

QByteArray ReadBytes(const QString& path, qint64 most)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Error(ErrorNumber::kPermissionDenied,
                    QStringLiteral("The database %1 can't be opened: %2").arg(path, file.errorString()));
    QByteArray bytes = file.read(most);
    if (file.error() != QFileDevice::NoError)
        throw Error(ErrorNumber::kPathFileAccess,
                    QStringLiteral("The database %1 can't be read: %2").arg(path, file.errorString()));
    return bytes;
}

QByteArray ReadHeader(const QString& path)
{
    return ReadBytes(path, kHeaderSize);
}

// The engine takes an empty file for an empty database, and finds out that a file is foreign only at the first
// query; so the file is looked at before the engine sees it. True for a Jet file.
bool CheckFile(const QString& path)
{
    if (!CFileSystem::FileExists(path))
        throw Error(ErrorNumber::kDatabaseNotFound, QStringLiteral("The database %1 was not found.").arg(path));
    const QByteArray header = ReadHeader(path);
    if (header.isEmpty())
        throw Error(ErrorNumber::kDatabaseBroken, QStringLiteral("The file %1 is empty.").arg(path));
    const bool isJet = JetFile::IsJetHeader(header);
    if (!isJet && !IsSqliteHeader(header))
        throw Error(ErrorNumber::kDatabaseBroken, QStringLiteral("The file %1 is not a database.").arg(path));
    return isJet;
}

// For the superuser the engine would write to a file that its owner has marked as read-only.
bool IsMarkedReadOnly(const QString& path)
{
    constexpr auto kAnyWrite = QFileDevice::WriteOwner | QFileDevice::WriteGroup | QFileDevice::WriteOther;
    return !(QFileInfo(path).permissions() & kAnyWrite);
}

[[noreturn]] void ThrowReadOnly(const QString& path)
{
    throw Error(ErrorNumber::kDatabaseReadOnly, QStringLiteral("The database %1 is read-only.").arg(path));
}

// Whoever has the target open would go on with the old file, and what a crashed writer left beside it would be taken
// for the new one's; so it is opened once, alone, as its next user would.
void CheckTarget(const QString& target)
{
    if (!CFileSystem::FileExists(target))
        return;
    const QByteArray header = ReadHeader(target);
    if (JetFile::IsJetHeader(header) || IsMarkedReadOnly(target))
        ThrowReadOnly(target);
    if (!IsSqliteHeader(header))
        return;
    try {
        (void)Database::OpenDatabase(target, true, false);
    } catch (const Error& error) {
        if (error.Number() != ErrorNumber::kDatabaseBroken)
            throw;
    }
}

std::shared_ptr<sqlite3> Connect(const QString& path, bool readOnly)
{
    // An absolute path, as the engine has a meaning of its own for names like ":memory:".
    const QByteArray name = QFile::encodeName(QFileInfo(path).absoluteFilePath());
    const int access = readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(name.constData(), &handle, access | SQLITE_OPEN_NOMUTEX, nullptr);
    std::shared_ptr<sqlite3> connection(handle, sqlite3_close_v2);
    if (code != SQLITE_OK)
        ThrowEngineError(handle, code);

    // Where writing is refused, the engine falls back to reading without a word.
    if (!readOnly && (sqlite3_db_readonly(handle, "main") == 1 || IsMarkedReadOnly(path)))
        ThrowReadOnly(path);
    // Files come from strangers: their views get no functions with side effects.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    LimitStatements(handle);
    return connection;
}

void Run(const std::shared_ptr<sqlite3>& connection, const QString& statement)
{
    SqliteStatement prepared(connection.get(), statement);
    while (prepared.Step()) {
        // a pragma answers with a row that nobody needs
    }
}

// A reader can't undo what a killed writer has left half done, and is refused the file as long as that stands.
void FinishCrashedWrite(const QString& path)
{
    if (!QFile::exists(QFileInfo(path).canonicalFilePath() + QStringLiteral("-journal")))
        return;
    try {
        Run(Connect(path, false), QStringLiteral("SELECT count(*) FROM sqlite_master"));
    } catch (const Error&) {
        // The reader finds the same, and tells it.
    }
}

// Foreign tools may leave a file in the engine's mode of a log for writing, in which only a writer that is the last to
// close it clears away the files beside it.
bool HasWriteLog(const QString& path)
{
    constexpr int kReadMode = 19;
    const QByteArray header = ReadHeader(path);
    return header.size() == kHeaderSize && header[kReadMode] == 2;
}

std::shared_ptr<sqlite3> ConnectReader(const QString& path)
{
    FinishCrashedWrite(path);
    if (HasWriteLog(path)) {
        try {
            auto connection = Connect(path, false);
            Run(connection, QStringLiteral("PRAGMA query_only = ON"));
            return connection;
        } catch (const Error&) {
            // As a file or folder that can't be written; a reader may still do.
        }
    }
    return Connect(path, true);
}

bool IsQuery(const QString& source)
{
    const QString text = source.trimmed();
    return text.startsWith(QLatin1String("select"), Qt::CaseInsensitive) && text.size() > 6 && text[6].isSpace();
}

}  // namespace

std::unique_ptr<Database> Database::OpenDatabase(const QString& path, bool exclusive, bool readOnly)
{
    const bool isJet = CheckFile(path);
    std::unique_ptr<Database> database(new Database(path, readOnly));
    if (isJet) {
        database->ReadGenuine();
        return database;
    }
    database->mConnection = readOnly ? ConnectReader(path) : Connect(path, false);
    if (exclusive)
        database->KeepOthersOut();
    database->CheckReadable();
    return database;
}

std::unique_ptr<Database> Database::CreateDatabase(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        throw Error(ErrorNumber::kPathFileAccess,
                    QStringLiteral("The database %1 can't be created: %2").arg(path, file.errorString()));
    file.close();
    try {
        std::unique_ptr<Database> database(new Database(path, false));
        database->mConnection = Connect(path, false);
        // Only the first write gives the file its header, without which it could not be opened again.
        database->Execute(QStringLiteral("PRAGMA user_version = 1"));
        return database;
    } catch (const Error&) {
        QFile::remove(path);
        throw;
    }
}

// What is read is a private copy, so nobody has to be kept out, and nobody could be.
void Database::ReadGenuine()
{
    if (!mReadOnly)
        throw Error(ErrorNumber::kDatabaseReadOnly,
                    QStringLiteral("The file %1 is a Jet database, which can only be read.").arg(mPath));
    if (QFileInfo(mPath).size() > kLargestJetFile)
        throw Error(ErrorNumber::kDatabaseBroken, QStringLiteral("The Jet database %1 is too large.").arg(mPath));
    mGenuine = CopyJetFile(ReadBytes(mPath, kLargestJetFile), mPath);
    mConnection = mGenuine->connection;
}

Database::~Database()
{
    Close();
}

// A writer takes the lock with a transaction, a reader with the first read, and neither gives it back.
void Database::KeepOthersOut()
{
    Run(Engine(), QStringLiteral("PRAGMA locking_mode = EXCLUSIVE"));
    if (mReadOnly)
        return;
    Run(Engine(), QStringLiteral("BEGIN EXCLUSIVE"));
    Run(Engine(), QStringLiteral("COMMIT"));
}

// Reads the schema; on the way the engine repairs what a crashed writer left, and compares the header with the
// file's length. It forgives a torn last page, whose rows would be missing later.
void Database::CheckReadable()
{
    Run(Engine(), QStringLiteral("SELECT count(*) FROM sqlite_master"));
    SqliteStatement query(Engine().get(), QStringLiteral("PRAGMA page_size"));
    query.Step();
    if (QFileInfo(mPath).size() % query.Value(0).toLongLong() != 0)
        throw Error(ErrorNumber::kDatabaseBroken, QStringLiteral("The database %1 is truncated.").arg(mPath));
}

const std::shared_ptr<sqlite3>& Database::Engine() const
{
    if (!mConnection)
        throw Error(ErrorNumber::kDatabaseNotFound, QStringLiteral("The database %1 is closed.").arg(mPath));
    return mConnection;
}

std::unique_ptr<Recordset> Database::OpenRecordset(const QString& source)
{
    if (IsQuery(source))
        return std::make_unique<Recordset>(Engine(), source, QString(), mReadOnly);
    const QString query = QStringLiteral("SELECT * FROM %1").arg(QuotedName(source));
    return std::make_unique<Recordset>(Engine(), query, source, mReadOnly);
}

void Database::Execute(const QString& statement)
{
    Run(Engine(), statement);
}

QString Database::TableDefs(const QString& name) const
{
    SqliteStatement query(Engine().get(),
                          QStringLiteral("SELECT name FROM sqlite_master WHERE type IN ('table', 'view') "
                                         "AND name = ? COLLATE NOCASE"));
    query.Bind(1, name);
    if (!query.Step())
        throw Error(ErrorNumber::kItemNotFound, QStringLiteral("There is no table %1 in %2.").arg(name, mPath));
    return query.Value(0).toString();
}

QStringList Database::TableNames() const
{
    SqliteStatement query(Engine().get(), QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' "
                                                         "AND name NOT LIKE 'sqlite~_%' ESCAPE '~'"));
    QStringList names;
    while (query.Step())
        names.append(query.Value(0).toString());
    return names;
}

QString Database::Properties(const QString& name) const
{
    const bool asksVersion = name.compare(QLatin1String("AccessVersion"), Qt::CaseInsensitive) == 0;
    const bool asksBuild = name.compare(QLatin1String("Build"), Qt::CaseInsensitive) == 0;
    if (mGenuine && (asksVersion || asksBuild))
        return asksVersion ? mGenuine->accessVersion : mGenuine->build;
    if (asksVersion) {
        SqliteStatement query(Engine().get(), QStringLiteral("PRAGMA user_version"));
        query.Step();
        return query.Value(0).toString();
    }
    if (asksBuild)
        return QString::fromLatin1(sqlite3_libversion());
    throw Error(ErrorNumber::kItemNotFound, QStringLiteral("There is no property %1.").arg(name));
}

void Database::BeginTrans()
{
    // Taking the write lock here rather than at the first row makes a file in use fail before any work is done.
    Execute(QStringLiteral("BEGIN IMMEDIATE"));
}

void Database::CommitTrans()
{
    Execute(QStringLiteral("COMMIT"));
}

void Database::Rollback()
{
    Execute(QStringLiteral("ROLLBACK"));
}

void Database::SaveCopy(const QString& target) const
{
    CheckTarget(target);
    CopyDatabase(Engine().get(), target);
}

QString Database::Kind() const
{
    return mGenuine ? mGenuine->kind : QStringLiteral("SQLite");
}

const std::vector<LeftOutObject>& Database::LeftOut() const
{
    static const std::vector<LeftOutObject> kNone;
    return mGenuine ? mGenuine->leftOut : kNone;
}

void Database::Close()
{
    if (mConnection && sqlite3_get_autocommit(mConnection.get()) == 0)
        sqlite3_exec(mConnection.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    mConnection.reset();
    if (mGenuine)
        mGenuine->connection.reset();
}

QString QuotedName(const QString& name)
{
    QString inner = name;
    return '"' + inner.replace('"', QLatin1String("\"\"")) + '"';
}

bool TableExists(Database& database, const QString& name)
{
    try {
        return database.OpenRecordset(name) != nullptr;
    } catch (const Error&) {
        return false;
    }
}

bool TableDefExists(const Database& database, const QString& name)
{
    try {
        return !database.TableDefs(name).isEmpty();
    } catch (const Error&) {
        return false;
    }
}

std::unique_ptr<Recordset> RecreateTable(Database& database, const QString& name)
{
    try {
        database.Execute(QStringLiteral("DROP TABLE %1").arg(QuotedName(name)));
    } catch (const Error&) {
        // There was none. Whatever else is wrong shows up again in the next statement.
    }
    database.Execute(QStringLiteral("CREATE TABLE %1 (PropertyName TEXT, PropertyValue TEXT)").arg(QuotedName(name)));
    return database.OpenRecordset(name);
}

}  // namespace fenrik
