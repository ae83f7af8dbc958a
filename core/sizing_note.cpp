#include "core/sizing_note.h"

namespace quench {

std::string SizingNoteText(SizingNote note) {
    switch (note) {
    case SizingNote::Velocity:
        return "Over the velocity limit at the largest allowed size";
    case SizingNote::Friction:
        return "Over the friction limit at the largest allowed size";
    case SizingNote::Other:
        return "Over a sizing limit at the largest allowed size";
    case SizingNote::None:
        break;
    }
    return {};
}

std::string SizingNoteName(SizingNote note) {
    switch (note) {
    case SizingNote::Velocity:
        return "velocity";
    case SizingNote::Friction:
        return "friction";
    case SizingNote::Other:
        return "other";
    case SizingNote::None:
        break;
    }
    return {};
}

} // namespace quench
