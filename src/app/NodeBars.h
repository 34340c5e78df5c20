#pragma once

#include <QToolBar>

class QAction;

namespace fenrik {

/// The two rows of buttons that stand for nodes: `Nodebar` with nodes 1 to 16 and the actions "Mount", "Unmount" and
/// "Ping", `Nodebar17_32` with nodes 17 to 32. A node's QAction bears the key "Node<n>".
class NodeBars : public QObject {
    Q_OBJECT

public:
    static constexpr int kNodes = 32;
    static constexpr int kNodesOfFirstBar = 16;

    explicit NodeBars(QObject* parent = nullptr);

    [[nodiscard]] QToolBar* First() const { return mFirst; }
    [[nodiscard]] QToolBar* Second() const { return mSecond; }

    /// The button of node `number`, 1 to 32; nullptr outside.
    [[nodiscard]] QAction* NodeButton(int number) const;

    /// "Mount", "Unmount" or "Ping".
    [[nodiscard]] QAction* ActionButton(const QString& key) const;

    /// Picture by key: "Node5", "Node5M" (mounted) or "Blank".
    void SetIcon(int number, const QString& iconKey);

    /// Enables or disables both bars as a whole.
    void SetEnabled(bool enabled);

Q_SIGNALS:
    void NodeClicked(int number);
    void ActionClicked(const QString& key);

private:
    void AddNodes(QToolBar* bar, int first, int last);
    void AddActions();

    QToolBar* mFirst;
    QToolBar* mSecond;
};

}  // namespace fenrik
