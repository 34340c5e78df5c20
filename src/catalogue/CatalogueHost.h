#pragma once

namespace fenrik {

/// What the catalogue needs from the tool above it. Called on the UI thread.
class CatalogueHost {
public:
    virtual ~CatalogueHost() = default;

    /// A file without which there is nothing to work with is missing: the program ends. Returns, and the caller
    /// leaves everything as it is.
    virtual void EndProgram() = 0;

    /// Number of the node that the user has selected, 0 if none.
    [[nodiscard]] virtual int SelectedNodeNumber() const = 0;
};

}  // namespace fenrik
