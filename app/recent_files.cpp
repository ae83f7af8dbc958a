#include "app/recent_files.h"

#include "core/settings_keys.h"
#include "core/text.h"

#include <algorithm>

namespace quench {

namespace {

// A guard against a hand-edited count that would make the menu absurd.
constexpr int MostPlaces = 99;

} // namespace

int RecentFiles::Capacity() const {
    return std::clamp(static_cast<int>(NumberOfPreviousProjectsOnFileMenu(settings_)), 0,
                      MostPlaces);
}

std::vector<std::string> RecentFiles::Entries() const {
    std::vector<std::string> entries;
    const int capacity = Capacity();
    for (int place = 0; place < capacity; ++place) {
        std::string file = Trim(RecentFile(settings_, place));
        if (!file.empty()) {
            entries.push_back(std::move(file));
        }
    }
    return entries;
}

bool RecentFiles::Add(std::string_view file) const {
    const int capacity = Capacity();
    if (capacity == 0 || TrimmedView(file).empty()) {
        return true;
    }
    std::vector<std::string> places;
    for (int place = 0; place < capacity; ++place) {
        places.push_back(RecentFile(settings_, place));
    }
    // The place the name leaves (or the last place) is where the shifting stops.
    auto freed = std::find(places.begin(), places.end(), file);
    if (freed == places.end()) {
        freed = places.end() - 1;
    }
    std::move_backward(places.begin(), freed, freed + 1);
    places.front() = std::string(file);
    bool written = true;
    for (int place = 0; place < capacity; ++place) {
        if (RecentFile(settings_, place) != places[static_cast<std::size_t>(place)]) {
            written = WriteRecentFile(settings_, place, places[static_cast<std::size_t>(place)]) &&
                      written;
        }
    }
    return written;
}

std::string RecentFileCaption(int place, std::string_view file) {
    return "&" + std::to_string(place + 1) + ": " + std::string(file);
}

} // namespace quench
