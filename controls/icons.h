// Icons out of a module's resources, each in the size that it is shown in. They are looked for where dialogs
// are: in the current resources first.
#pragma once

#include <memory>
#include <windows.h>

namespace qx::controls {

struct IconDestroyer {
    using pointer = HICON;
    void operator()(HICON icon) const { ::DestroyIcon(icon); }
};
using OwnedIcon = std::unique_ptr<HICON, IconDestroyer>;

/// In pixels, square. Null without such an icon.
OwnedIcon loadIcon(int id, int size);

/// The picture of a window: for its caption, and for where there is more room.
struct WindowIcons {
    explicit WindowIcons(int id);

    OwnedIcon small;
    OwnedIcon big;
};

} // namespace qx::controls
