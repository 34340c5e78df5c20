#pragma once

#include "diagnostics/GlassArea.h"

namespace fenrik {

class CharacterFace;
class GlyphSheets;

/// The narrow panel: the window "PicMiscDisplay" on the picture "PicMiscFace" of 8 columns.
class MiscPanel98 : public GlassArea {
    Q_OBJECT

public:
    /// `sheets` outlives it.
    explicit MiscPanel98(const GlyphSheets& sheets, QWidget* parent = nullptr);

    [[nodiscard]] CharacterFace& Face() { return mFace; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    CharacterFace& mFace;  // owned by the scroll area
};

}  // namespace fenrik
