#pragma once

namespace fenrik {

/// From now on screen readers are given the text of a CharacterFace, when they ask for it, as its description.
void DescribeFacesToScreenReaders();

}  // namespace fenrik
