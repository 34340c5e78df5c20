#pragma once

#include <QScrollArea>

namespace fenrik {

/// A window on a face: a scroll area without a frame, which is dark where the face ends. It is scrolled down and up
/// alone.
class GlassArea : public QScrollArea {
public:
    explicit GlassArea(QWidget* parent = nullptr);
};

}  // namespace fenrik
