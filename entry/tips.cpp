#include "entry/tips.h"

#include "core/text.h"

#include <fstream>

namespace quench {

std::vector<std::string> ReadTips(const std::filesystem::path& file) {
    std::vector<std::string> tips;
    std::ifstream in(file, std::ios::binary);
    std::string line;
    while (std::getline(in, line)) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        std::string tip = Trim(line);
        if (!tip.empty()) {
            tips.push_back(std::move(tip));
        }
    }
    return tips;
}

std::size_t NextTip(std::size_t index, std::size_t count) {
    return count == 0 ? 0 : (index + 1) % count;
}

} // namespace quench
