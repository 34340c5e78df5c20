#pragma once

#include <QtGlobal>

namespace fenrik {

/// `text`, a QString or a QByteArray, without the blanks at its ends. Any other white space is data: a node's
/// relationship may well end in the byte of a line feed.
template <typename Text>
[[nodiscard]] Text TrimBlanks(const Text& text)
{
    qsizetype first = 0;
    qsizetype end = text.size();
    while (first < end && text[first] == ' ')
        ++first;
    while (end > first && text[end - 1] == ' ')
        --end;
    return text.mid(first, end - first);
}

}  // namespace fenrik
