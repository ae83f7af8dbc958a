#pragma once

// The captions of the tree and grid builder tabs. A project whose primary discharge is "Hose"
// names hoses where a sprinkler project names sprinklers; the captions that do not name one are
// the same in both. The captions beside the columns are the discharge
// vocabulary's (BuilderArea, BuilderCount, BuilderSpacing).

#include <string_view>

namespace quench {

constexpr int TreeCaptionCount = 11;
constexpr int GridCaptionCount = 10;

// The caption of a row of the builder's input column, by its index; empty past the last row.
std::string_view TreeInputCaption(int index, bool hose);
std::string_view GridInputCaption(int index, bool hose);

} // namespace quench
