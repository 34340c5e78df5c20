#pragma once

#include "catalogue/CatalogueHost.h"

namespace fenrik {

/// Counts the ends of the program instead of ending it.
class CatalogueHostRecorder : public CatalogueHost {
public:
    void EndProgram() override { ++ends; }
    [[nodiscard]] int SelectedNodeNumber() const override { return selectedNode; }

    int ends = 0;
    int selectedNode = 0;
};

}  // namespace fenrik
