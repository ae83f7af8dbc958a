#pragma once

// The recent files list of the File menu, kept in the section "RecentFiles" as File0, File1, ...:
// as many entries as NumberOfPreviousProjectsOnFileMenu of "Options" asks for, the newest first.

#include "core/settings.h"

#include <string>
#include <string_view>
#include <vector>

namespace quench {

class RecentFiles {
public:
    explicit RecentFiles(IniFileHandler settings) : settings_(std::move(settings)) {}

    // The number of places in the list.
    int Capacity() const;

    // The names in the list, newest first; empty places are left out.
    std::vector<std::string> Entries() const;

    // Puts the name at File0 and moves the others down one place. A name already in the list
    // moves up from its place rather than standing twice. False when the file cannot be written.
    bool Add(std::string_view file) const;

private:
    IniFileHandler settings_;
};

// The menu caption of the entry at a place: "&1: " and the name for place 0.
std::string RecentFileCaption(int place, std::string_view file);

} // namespace quench
