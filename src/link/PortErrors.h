#pragma once

namespace fenrik {

class Boxes;
class Error;

/// Tells the user in a box why a port could not be opened; true if the user wants another try. An error of another kind
/// is thrown on. To be called in the handler of `error`.
[[nodiscard]] bool AskAfterPortError(Boxes& boxes, int commPort, const Error& error);

}  // namespace fenrik
