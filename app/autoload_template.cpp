#include "app/autoload_template.h"

#include "app/directories.h"
#include "core/project_file.h"

#include <memory>

namespace quench {

bool CreateAutoloadTemplate(const std::filesystem::path& directory, std::string* error) {
    const std::filesystem::path file = directory / AutoloadFileName;
    std::error_code ignored;
    if (std::filesystem::exists(file, ignored)) {
        return true;
    }
    const auto defaults = std::make_unique<Project>();
    return WriteProject(*defaults, file, error) == WriteOutcome::Written;
}

} // namespace quench
