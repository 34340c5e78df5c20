#pragma once

#include "platform/Database.h"
#include "platform/Error.h"

#include <QFile>
#include <QStringList>

namespace fenrik {

/// Makes a database at `path` (anew, if there is one) by running `statements` in order.
inline void MakeDatabase(const QString& path, const QStringList& statements)
{
    QFile::remove(path);
    const auto database = Database::CreateDatabase(path);
    database->BeginTrans();
    for (const QString& statement : statements)
        database->Execute(statement);
    database->CommitTrans();
}

/// Makes a file of just these bytes.
inline void MakeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw Error(ErrorNumber::kPathFileAccess, path);
}

/// Makes a database whose table "T" is damaged: each of its pages names the next one sixty times, so that it has more
/// rows than can ever be read.
inline void MakeEndlessTable(const QString& path)
{
    constexpr int kPage = 4096;
    constexpr int kPages = 9;
    MakeDatabase(path, {"CREATE TABLE T (a)", "CREATE TABLE Room (a)", "INSERT INTO Room VALUES (zeroblob(40000))"});
    QByteArray bytes;
    if (QFile file(path); file.open(QIODevice::ReadOnly))
        bytes = file.readAll();
    const auto put = [&bytes](int place, int value, int width) {
        for (int i = width - 1; i >= 0; --i, value >>= 8)
            bytes[place + i] = char(value);
    };
    for (int level = 0; level < kPages; ++level) {
        const int begin = level == 0 ? kPage : (level + 2) * kPage;
        const int next = level + 4;  // pages count from 1, and the third one is the other table's
        const bool leaf = level == kPages - 1;
        const int cells = leaf ? 1 : 60;
        bytes.replace(begin, kPage, QByteArray(kPage, '\0'));
        put(begin, leaf ? 13 : 5, 1);
        put(begin + 3, cells, 2);
        put(begin + 5, kPage - 5 * cells, 2);
        put(begin + 8, next, leaf ? 0 : 4);
        for (int i = 0; i < cells; ++i) {
            const int cell = kPage - 5 * (i + 1);
            put(begin + (leaf ? 8 : 12) + 2 * i, cell, 2);
            put(begin + cell, leaf ? 0x03010201 : next, 4);  // a row of one number, or a page and its largest row
            put(begin + cell + 4, i + 1, 1);
        }
    }
    MakeFile(path, bytes);
}

}  // namespace fenrik
