#include "entry/builder_rows.h"

#include "core/formats.h"
#include "entry/builder_words.h"
#include "entry/pipe_table.h"
#include "library/equivalent_length.h"

#include <cmath>
#include <string>
#include <unordered_set>

namespace quench {

namespace words = builder_words;

namespace {

bool HasRoom(const Project& project, long long pipes) {
    const long long first = project.NumberOfPipeRows + 1;
    return first + pipes - 2 < MaxPipes;
}

bool NumbersFit(const std::vector<PlacedPipe>& pipes) {
    for (const PlacedPipe& pipe : pipes) {
        for (const std::string* text : {&pipe.Row.BegNode, &pipe.Row.EndNode}) {
            const long long number = RowNodeNumber(*text);
            if (number < 1 || number > 9999) {
                return false;
            }
        }
    }
    return true;
}

// The new row over an old one keeps the old pressure estimates, as a cleared row does.
void WriteRow(Project& project, const PipeLibrary& library, int row, const PipeRecord& planned) {
    ClearPipeRow(project, row);
    PipeRecord& record = project.PipeRecord[static_cast<std::size_t>(row)];
    const Single estimateB = record.PressEstimateB;
    const Single estimateE = record.PressEstimateE;
    record = planned;
    record.PressEstimateB = estimateB;
    record.PressEstimateE = estimateE;
    RecalcEquivLength(project, library, row);
}

} // namespace

long long RowNodeNumber(const std::string& text) {
    const double value = ToNumber(text);
    return std::isfinite(value) && std::fabs(value) < 1e15 ? static_cast<long long>(value) : 0;
}

bool NewNumbersClash(const Project& project, long long source, long long increment,
                     long long pipes) {
    std::unordered_set<long long> beginnings;
    bool endsAtSource = false;
    for (int row = 1; row <= MaxPipes; ++row) {
        const PipeRecord& record = project.PipeRecord[static_cast<std::size_t>(row)];
        if (!IsTrue(record.Active) || record.BegNode.empty() || record.EndNode.empty()) {
            continue;
        }
        beginnings.insert(RowNodeNumber(record.BegNode));
        endsAtSource = endsAtSource || RowNodeNumber(record.EndNode) == source;
    }
    if (endsAtSource) {
        return true;
    }
    for (long long i = 0; i <= pipes; ++i) {
        if (beginnings.contains(source + i * increment)) {
            return true;
        }
    }
    return false;
}

BuildResult WritePlannedRows(Project& project, const PipeLibrary& library, Dialogs& dialogs,
                             const std::vector<PlacedPipe>& pipes, long long pipesRequired,
                             long long source, long long increment, std::string_view noRoom) {
    BuildResult result;
    const long long count = pipesRequired;
    if (!HasRoom(project, count) || count != static_cast<long long>(pipes.size())) {
        dialogs.ShowMessage(MessageStyle::Warning, words::ProgramTitle,
                            std::string(noRoom) + std::to_string(MaxPipes) + ".");
        result.Stop = BuildStop::NoRoom;
        return result;
    }
    if (!NumbersFit(pipes)) {
        dialogs.ShowMessage(MessageStyle::Warning, words::ProgramTitle, words::NodeNumbersTooHigh);
        result.Stop = BuildStop::NodeNumbers;
        return result;
    }
    if (project.NumberOfPipeRows > 0 && NewNumbersClash(project, source, increment, count) &&
        dialogs.Ask(Buttons::YesNo, Answer::Yes, MessageStyle::Question, words::DuplicateNodesTitle,
                    words::DuplicateNodes) != Answer::Yes) {
        result.Stop = BuildStop::DuplicateNodes;
        return result;
    }
    result.FirstRow = project.NumberOfPipeRows + 1;
    int row = result.FirstRow;
    for (const PlacedPipe& pipe : pipes) {
        WriteRow(project, library, row++, pipe.Row);
    }
    result.RowsWritten = static_cast<int>(count);
    project.NumberOfPipeRows = CountPipeRows(project);
    return result;
}

bool ConfirmPipeAdd(Project& project, Dialogs& dialogs, std::string_view text) {
    if (project.NumberOfPipeRows <= 0) {
        return true;
    }
    switch (dialogs.Ask(Buttons::YesNoCancel, Answer::Yes, MessageStyle::Question,
                        words::ConfirmPipeAddTitle, text)) {
    case Answer::Yes:
        return true;
    case Answer::No:
        project.NumberOfPipeRows = 0;
        return true;
    default:
        return false;
    }
}

} // namespace quench
