#pragma once

#include "CommandsFixture.h"
#include "catalogue/CSpecialCommand.h"
#include "catalogue/CatalogueHost.h"

namespace fenrik {

class SelectedNode : public CatalogueHost {
public:
    explicit SelectedNode(const CSystem& system) : mSystem(system) {}
    void EndProgram() override {}
    [[nodiscard]] int SelectedNodeNumber() const override { return mSystem.SelectedNodeNumber(); }

private:
    const CSystem& mSystem;
};

/// Special command 930: the node in the high byte, the code in the low one.
class SpecialTest : public CommandsTest {
protected:
    SpecialTest()
    {
        commands[930].Name = "Node Service";
        special.MyCommand = 930;
        special.CodeMask = 0x00FF;
        special.NodeMask = 0x1F00;
        special.NodeShift = 8;
        special.TextSeperator = ": ";
        special.AddItem("Restart", 5, false, false, "", "Wrench");
        special.AddItem("Doors", 6, true, false, "Open", "Door");
        special.AddItem("Doors", 6, false, false, "", "Door");
        special.AddItem("Assign", 40, false, true, "#Press the switch", "Info");
        special.AddItem("Doors", 7, false, false, "#Sent by the node", "Door");
    }

    [[nodiscard]] static CMessage Of(int data, int on = 0, int extended = 0)
    {
        return Request(930, data, on, extended);
    }

    void SelectNode(int number)
    {
        system.ActivateNode(number);
        system.SelectNode(std::uint8_t(number));
    }

    SelectedNode selected{system};
    CSpecialCommand special{commands, selected};
};

}  // namespace fenrik
