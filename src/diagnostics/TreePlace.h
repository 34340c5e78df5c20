#pragma once

#include <QSet>
#include <QString>

class QTreeView;

namespace fenrik {

/// How the user has left a tree of points: which of them are open, and how far it is scrolled. A tree that is built
/// anew would be closed and back at its top.
class TreePlace {
public:
    /// Before the rows go. An empty tree leaves what was noted last.
    void Note(const QTreeView& tree);

    /// When the rows are there again: opens and scrolls as noted, row by key, if they are rows of the same `node` as
    /// at the last time.
    void Restore(QTreeView& tree, int node);

private:
    QSet<QString> mOpen;  // keys of the rows
    int mFromTop = 0;     // positions of the scroll bars
    int mFromLeft = 0;
    int mNode = 0;
};

}  // namespace fenrik
