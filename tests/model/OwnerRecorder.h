#pragma once

#include "model/SystemOwner.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace fenrik {

/// A window of which only the node buttons' states and the list of what it was asked for remain.
class OwnerRecorder : public SystemOwner {
public:
    void SetNodeButtonPressed(const NodeButton& button, bool value) override { Put(pressed, button, value); }
    void SetNodeButtonEnabled(const NodeButton& button, bool value) override { Put(enabled, button, value); }
    void SetNodeButtonIcon(const NodeButton& button, const QString& key) override { icons[button.number] = key; }
    void RefreshUINodeBarNodes() override { calls.push_back("RefreshUINodeBarNodes"); }
    void AdjustFormCaption() override { calls.push_back("AdjustFormCaption"); }
    void SystemSaved(const QString& name) override { calls.push_back("SystemSaved " + name.toStdString()); }
    void HandleSelectedNodeChange() override { calls.push_back("HandleSelectedNodeChange"); }
    void HandleMountedNodeChange() override { calls.push_back("HandleMountedNodeChange"); }

    std::set<int> pressed;
    std::set<int> enabled;
    std::map<int, QString> icons;
    std::vector<std::string> calls;

private:
    static void Put(std::set<int>& buttons, const NodeButton& button, bool in)
    {
        if (in)
            buttons.insert(button.number);
        else
            buttons.erase(button.number);
    }
};

}  // namespace fenrik
