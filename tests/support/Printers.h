#pragma once

#include <QByteArray>
#include <QString>

#include <ostream>

/// Lets a failed expectation show texts as texts. Found by argument-dependent look-up, hence outside any namespace.
inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QByteArray& bytes, std::ostream* out)
{
    *out << bytes.toHex(' ').toStdString();
}
