#pragma once

namespace fenrik {

/// Lets screen readers see a MessageListView as a list of lines; Qt knows only its own list, tree and table. May be
/// called more than once.
void InstallAccessibleMessageList();

}  // namespace fenrik
