#pragma once

class QString;

namespace fenrik {

class Boxes;

/// Tells the user that `file`, a bare name, can't be loaded and that the program ends for it. Ending it is the
/// caller's.
void TellLoadFailure(Boxes& boxes, const QString& file);

}  // namespace fenrik
