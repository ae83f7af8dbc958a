#include "app/start_file.h"

#include "core/text.h"

namespace quench {

namespace {

bool EndsInUpper(std::string_view name, std::string_view ending) {
    return name.size() >= ending.size() &&
           ToUpper(name.substr(name.size() - ending.size())) == ending;
}

} // namespace

StartFile DecideStartFile(std::string_view commandLine, bool openLastProject,
                          std::string_view lastOpened,
                          const std::filesystem::path& projectsDirectory, bool untitledTempExists) {
    std::string name = Trim(commandLine);
    if (name.empty() && openLastProject) {
        name = Trim(lastOpened);
    }
    StartFile start;
    if (name.empty()) {
        start.What = untitledTempExists ? StartFile::Action::Recover : StartFile::Action::Nothing;
        return start;
    }
    std::filesystem::path file = name;
    if (name.find('/') == std::string::npos) {
        file = projectsDirectory / name;
    }
    if (!EndsInUpper(name, ".QNW") && !EndsInUpper(name, ".TEM")) {
        file += ".TEM";
    }
    std::error_code ignored;
    const std::filesystem::path absolute = std::filesystem::absolute(file, ignored);
    start.What = StartFile::Action::Open;
    start.File = absolute.empty() ? file : absolute;
    return start;
}

} // namespace quench
