// quench dxf FILE.qnw OUT.dxf
// Writes the supply and demand graph of a project as an AutoCAD DXF drawing (US units only).

#include "cli/command.h"
#include "core/project_file.h"
#include "reports/dxf_graph.h"

#include <filesystem>
#include <memory>
#include <ostream>

namespace quench::cli {

namespace {

constexpr const char* Usage = "usage: quench dxf FILE.qnw OUT.dxf";

// The metric message of the writer, on err.
class MessageLines final : public Dialogs {
public:
    explicit MessageLines(std::ostream& err) : err_(err) {}
    void ShowMessage(MessageStyle, std::string_view, std::string_view text) override {
        err_ << text << '\n';
    }
    Answer Ask(Buttons, Answer defaultAnswer, MessageStyle, std::string_view,
               std::string_view) override {
        return defaultAnswer;
    }

private:
    std::ostream& err_;
};

int RunDxf(const Arguments& arguments, std::ostream&, std::ostream& err) {
    if (arguments.size() != 2 || arguments[0].empty() || arguments[1].empty()) {
        return UsageError(err, Usage);
    }
    const std::filesystem::path file = arguments[0];
    const auto project = std::make_unique<Project>();
    std::string error;
    if (!ReadProject(*project, file, &error)) {
        return UsageError(err, "cannot read \"" + file.string() + "\": " + error);
    }
    MessageLines messages(err);
    switch (WriteDxfGraph(*project, arguments[1], messages, &error)) {
    case DxfGraphOutcome::Written:
        return ExitSuccess;
    case DxfGraphOutcome::Metric:
        return ExitStopped;
    case DxfGraphOutcome::ImpossibleTest:
        err << DxfImpossibleTestMessage << '\n';
        return ExitStopped;
    case DxfGraphOutcome::WriteFailed:
        break;
    }
    return UsageError(err, "cannot write \"" + arguments[1] + "\": " + error);
}

const CommandRegistration registration(
    "dxf", "FILE.qnw OUT.dxf",
    "Write the hydraulic supply and demand graph of the project as an AutoCAD DXF drawing "
    "(projects in US units only).",
    RunDxf);

} // namespace

} // namespace quench::cli
