#pragma once

#include "diagnostics/FaceFixture.h"
#include "diagnostics/MiscFace.h"
#include "diagnostics/PicMiscDisplay.h"
#include "support/FakeClock.h"

#include <vector>

namespace fenrik {

/// Answers with a count, or not at all.
class NodeCountScript : public NodeCountSource {
public:
    std::optional<int> AskNodeCount() override
    {
        ++asked;
        return answer;
    }

    std::optional<int> answer;
    int asked = 0;
};

class PanelFixture : public FaceFixture {
protected:
    /// Row `row` of both pictures, which have to be alike there.
    QString Line(int row) const
    {
        EXPECT_EQ(Row(face, row), Row(face17, row));
        EXPECT_EQ(DimRow(face, row), DimRow(face17, row));
        return Row(face, row);
    }

    bool IsDim(int row) const { return DimRow(face, row) == Row(face, row); }
    bool IsBright(int row) const { return DimRow(face, row).trimmed().isEmpty(); }

    QTimer& Timer(const char* name) { return *panel.findChild<QTimer*>(name); }

    int nodesInSystem = 32;
    PicMiscDisplay display{sheets, [this] { return nodesInSystem; }};
    CharacterFace& face = *display.findChild<CharacterFace*>("PicMiscFace");
    CharacterFace& face17 = *display.findChild<CharacterFace*>("PicMiscFace17_32");
    FakeClock clock;
    NodeCountScript node;
    MiscFace panel{display, clock, node};
};

}  // namespace fenrik
