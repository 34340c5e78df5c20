#pragma once

#include "diagnostics/GlassArea.h"

namespace fenrik {

class CharacterFace;
class GlyphSheets;

/// The window on the big face: holds the face "PicAnalogFace", which is taller than most windows, and moves it with
/// the scroll bar "VScrlanalogFace", the wheel and the keys. The face's top is minus the bar's value. The bar is hidden
/// while all is visible.
class PicAnalogDisplay : public GlassArea {
    Q_OBJECT

public:
    /// `sheets` outlives it.
    explicit PicAnalogDisplay(const GlyphSheets& sheets, QWidget* parent = nullptr);

    [[nodiscard]] CharacterFace& Face() { return mFace; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    CharacterFace& mFace;  // owned by the scroll area
};

}  // namespace fenrik
