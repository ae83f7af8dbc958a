#include "entry/builder_captions.h"

#include <array>

namespace quench {

namespace {

struct Caption {
    std::string_view Sprinkler;
    std::string_view Hose; // empty: the same as for sprinklers
};

constexpr std::array<Caption, TreeCaptionCount> TreeCaptions = {{
    {"Nodal Numbering Increment:", ""},
    {"Tree Source Node Number", ""},
    {"Tree Exit Node Number", ""},
    {"Length of Cross Main", ""},
    {"Distance Between Branch Line", ""},
    {"Length of Left Side Branch Line", ""},
    {"Length of Right Side Branch Line", ""},
    {"Left Side Distance from Cross Main to First Sprinkler",
     "Left Side Distance from Cross Main to First Hose"},
    {"Right Side Distance from Cross Main to First Sprinkler",
     "Right Side Distance from Cross Main to First Hose"},
    {"Left Side Distance Bet. Sprinklers", "Left Side Distance Between Hoses"},
    {"Right Side Distance Bet. Sprinklers", "Right Side Distance Between Hoses"},
}};

constexpr std::array<Caption, GridCaptionCount> GridCaptions = {{
    {"Nodal Numbering Increment:", ""},
    {"Grid Source Node Number", ""},
    {"Source Entry Point", ""},
    {"Distance To First Branch", ""},
    {"Distance Between Branch Lines", ""},
    {"Number Of Branch Lines", ""},
    {"Left Side Distance from Perimeter To First Sprinkler",
     "Left Side Distance from Perimeter To First Hose"},
    {"Distance Between Sprinkler Heads", "Distance Between Hoses"},
    {"Number Of Sprinkler Heads Per Branch Line", "Number Of Hoses Per Branch Line"},
    {"Right Side Distance from Last Sprinkler To Perimeter",
     "Right Side Distance from Last Hose To Perimeter"},
}};

std::string_view Choose(const Caption& caption, bool hose) {
    return hose && !caption.Hose.empty() ? caption.Hose : caption.Sprinkler;
}

template <std::size_t Count>
std::string_view CaptionAt(const std::array<Caption, Count>& captions, int index, bool hose) {
    if (index < 0 || index >= static_cast<int>(Count)) {
        return {};
    }
    return Choose(captions[static_cast<std::size_t>(index)], hose);
}

} // namespace

std::string_view TreeInputCaption(int index, bool hose) {
    return CaptionAt(TreeCaptions, index, hose);
}

std::string_view GridInputCaption(int index, bool hose) {
    return CaptionAt(GridCaptions, index, hose);
}

} // namespace quench
