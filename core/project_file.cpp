#include "core/project_file.h"

#include "core/formats.h"
#include "core/record_file.h"
#include "core/record_layout.h"
#include "core/record_reader.h"
#include "core/record_sequence.h"
#include "core/record_writer.h"
#include "core/text.h"

#include <algorithm>
#include <span>
#include <type_traits>
#include <vector>

namespace quench {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr Integer HighestMaterial = MaterialFirePump;
constexpr Integer RepairedMaterial = 4;

// The bytes of a record that lie within the file: the whole record, its first part, or none.
std::span<const std::uint8_t> RecordBytes(std::span<const std::uint8_t> file, int number,
                                          std::size_t length = ProjectRecordLength) {
    const auto offset = static_cast<std::size_t>(number - 1) * ProjectRecordLength;
    if (number < 1 || offset >= file.size()) {
        return {};
    }
    return file.subspan(offset, std::min(length, file.size() - offset));
}

// Reads the records in file order with a running counter, as the sequence visits them.
class ProjectReader {
public:
    ProjectReader(std::span<const std::uint8_t> file, bool skipOutputTables)
        : file_(file), skipOutputTables_(skipOutputTables) {}

    template <class Data>
    void Record(std::string_view /*name*/, Data& data) {
        RecordReader reader(NextRecord());
        VisitRecordFields(data, reader);
    }

    template <class T>
    void Value(std::string_view name, T& value) {
        RecordReader reader(NextRecord());
        if constexpr (std::is_same_v<T, std::string>) {
            reader.String(name, value);
        } else {
            reader.Number(name, value);
        }
    }

    void Count(std::string_view name, Integer& count) { Value(name, count); }

    // Rows beyond capacity, or all rows of a skipped table, are passed over: the counter still
    // runs through them so that the records after stay in step.
    template <class Rows>
    void Table(std::string_view name, Rows& rows, Integer count, TableKind kind) {
        const bool skipped = kind == TableKind::Output && skipOutputTables_;
        const int stored = skipped ? 0 : UsedRows(rows, count);
        for (int row = 1; row <= stored; ++row) {
            Record(name, rows[static_cast<std::size_t>(row)]);
        }
        Advance(std::max(0, count - stored));
    }

private:
    std::span<const std::uint8_t> NextRecord() {
        Advance(1);
        return RecordBytes(file_, counter_);
    }

    // The counter is an Integer: it stops at the last record number instead of passing it.
    void Advance(int records) { counter_ = std::min(counter_ + records, LastRecordNumber); }

    std::span<const std::uint8_t> file_;
    bool skipOutputTables_;
    int counter_ = 0;
};

// Counts the records that the writer lays, so that the image is allocated once.
class RecordCounter {
public:
    template <class Data>
    void Record(std::string_view /*name*/, const Data& /*data*/) {
        ++count_;
    }
    template <class T>
    void Value(std::string_view /*name*/, const T& /*value*/) {
        ++count_;
    }
    void Count(std::string_view /*name*/, Integer /*count*/) { ++count_; }
    template <class Rows>
    void Table(std::string_view /*name*/, const Rows& rows, Integer count, TableKind /*kind*/) {
        count_ += static_cast<std::size_t>(UsedRows(rows, count));
    }
    std::size_t Records() const { return count_; }

private:
    std::size_t count_ = 0;
};

std::string_view AsText(const Bytes& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// Lays the records one after another, each on its own background of blanks.
class ProjectWriter {
public:
    explicit ProjectWriter(Bytes& image) : image_(image) { image_.clear(); }

    // Written out in pieces: the records laid go to write whenever they reach pieceBytes.
    ProjectWriter(Bytes& buffer, const WritePiece& write, std::size_t pieceBytes)
        : image_(buffer), write_(&write), pieceBytes_(pieceBytes) {
        image_.clear();
    }

    // Hands over the records laid since the last piece; false once a write has failed.
    bool Flush() {
        if (write_ != nullptr && !writeFailed_ && !image_.empty()) {
            writeFailed_ = !(*write_)(AsText(image_));
        }
        image_.clear();
        return !writeFailed_;
    }

    template <class Data>
    void Record(std::string_view name, const Data& data) {
        WriteRecord(name, 0, data);
    }

    template <class T>
    void Value(std::string_view name, const T& value) {
        RecordWriter writer(NextRecord());
        if constexpr (std::is_same_v<T, std::string>) {
            writer.String(name, value);
        } else {
            writer.Number(name, value);
        }
        Check(writer, name, 0);
    }

    void Count(std::string_view name, Integer count) { Value(name, count); }

    template <class Rows>
    void Table(std::string_view name, const Rows& rows, Integer count, TableKind /*kind*/) {
        const int used = UsedRows(rows, count);
        for (int row = 1; row <= used; ++row) {
            WriteRecord(name, row, rows[static_cast<std::size_t>(row)]);
        }
    }

    // Why the model cannot be written, or "" when it can.
    const std::string& Problem() const { return problem_; }

private:
    template <class Data>
    void WriteRecord(std::string_view name, int row, const Data& data) {
        RecordWriter writer(NextRecord());
        VisitRecordFields(data, writer);
        Check(writer, name, row);
    }

    std::span<std::uint8_t> NextRecord() {
        if (write_ != nullptr && image_.size() >= pieceBytes_) {
            Flush();
        }
        image_.resize(image_.size() + ProjectRecordLength);
        return std::span<std::uint8_t>(image_).last(ProjectRecordLength);
    }

    void Check(const RecordWriter& writer, std::string_view name, int row) {
        if (!writer.Overflowed() || !problem_.empty()) {
            return;
        }
        problem_ = std::string(name) + (row > 0 ? " row " + std::to_string(row) : "") +
                   " does not fit in a record of 1000 bytes (its texts are too long, from " +
                   std::string(writer.OverflowField()) + " on)";
    }

    Bytes& image_;
    const WritePiece* write_ = nullptr;
    std::size_t pieceBytes_ = 0;
    bool writeFailed_ = false;
    std::string problem_;
};

void SetError(std::string* error, std::string text) {
    if (error != nullptr) {
        *error = std::move(text);
    }
}

bool IsBlankName(const std::filesystem::path& file) {
    return Trim(file.string()).empty();
}

// The decimal text of the format number, counted only when it begins with a 6: the text of a
// nonzero GPDProjectFormat, else that of the ProgramVersion of early files. "" when neither.
std::string FormatText(const ProjectData& data) {
    const std::string text = data.GPDProjectFormat != 0 ? std::to_string(data.GPDProjectFormat)
                                                        : std::to_string(data.ProgramVersion);
    return text.starts_with('6') ? text : std::string();
}

void RepairMaterials(Project& project) {
    const int used = UsedRows(project.PipeRecord, project.NumberOfPipeRows);
    for (int row = 1; row <= MaxPipes; ++row) {
        Integer& material = project.PipeRecord[static_cast<std::size_t>(row)].Material;
        if (row > used) {
            material = project.SystemData.DefaultPipeMaterial;
        } else if (material > HighestMaterial) {
            material = RepairedMaterial;
        }
    }
}

void DefaultWhenBlank(std::string& text, const char* fallback) {
    if (TrimmedView(text).empty()) {
        text = fallback;
    }
}

// The extension records that the file's format holds, and the repairs that follow them.
void ReadExtensionRecords(Project& project, ProjectReader& reader) {
    project.AlarmDeviceName.clear();
    project.AlarmDeviceShortName.clear();
    project.AlarmDeviceCode.clear();
    project.InputChanged = 0;
    const std::string formatText = FormatText(project.ProjectData);
    const double format = ToNumber(formatText);
    VisitExtensionRecords(project, reader, ExtensionRecords{format > 60111, format > 60117});
    if (formatText.empty() || format < 60121) {
        project.SystemData.ExteriorHoseFlow = 0;
    }
    if (project.UnitSystem < 0 || project.UnitSystem > 2) {
        project.UnitSystem = 0;
    }
    DefaultWhenBlank(project.AlarmDeviceName, DefaultAlarmDeviceName);
    DefaultWhenBlank(project.AlarmDeviceShortName, DefaultAlarmDeviceShortName);
    DefaultWhenBlank(project.AlarmDeviceCode, DefaultAlarmDeviceCode);
}

// The largest count of the four tables, with its name, when it is above capacity.
std::string CountAboveCapacity(const Project& project) {
    const std::pair<const char*, Integer> counts[] = {
        {"NumberOfPipeRows", project.NumberOfPipeRows},
        {"NumberOfPipes", project.NumberOfPipes},
        {"NumberOfNodes", project.NumberOfNodes},
        {"NumberOfUniquePipeSections", project.CalculationData.NumberOfUniquePipeSections},
    };
    for (const auto& [name, count] : counts) {
        if (count > MaxPipes) {
            return std::string(name) + " is " + std::to_string(count) + ", above the capacity of " +
                   std::to_string(MaxPipes);
        }
    }
    return {};
}

} // namespace

bool ReadProject(Project& project, const std::filesystem::path& file, std::string* error) {
    Bytes bytes;
    std::string problem;
    if (!ReadFileHead(file, static_cast<std::size_t>(LastRecordNumber) * ProjectRecordLength, bytes,
                      problem)) {
        SetError(error, problem);
        return false;
    }
    ReadProjectImage(project, bytes);
    return true;
}

void ReadProjectImage(Project& project, std::span<const std::uint8_t> image) {
    ProjectReader reader(image, project.LoadingTemplate);
    VisitProjectRecords(project, reader);
    RepairMaterials(project);
    ReadExtensionRecords(project, reader);
}

void ReadProjectFileBytes(Project& project, std::span<const std::uint8_t> fileBytes) {
    const auto reach = static_cast<std::size_t>(LastRecordNumber) * ProjectRecordLength;
    ReadProjectImage(project, fileBytes.first(std::min(reach, fileBytes.size())));
}

bool ReadProjectHeader(Project& project, const std::filesystem::path& file, std::string* error) {
    Bytes bytes;
    std::string problem;
    if (!ReadFileHead(file, 5 * ProjectRecordLength, bytes, problem)) {
        SetError(error, problem);
        return false;
    }
    ProjectReader reader(bytes, true);
    VisitHeaderRecords(project, reader);
    return true;
}

bool LayProjectImage(const Project& project, std::vector<std::uint8_t>& image, std::string* error) {
    RecordCounter counter;
    VisitProjectRecords(project, counter);
    VisitExtensionRecords(project, counter);
    ProjectWriter writer(image);
    image.reserve(counter.Records() * ProjectRecordLength);
    VisitProjectRecords(project, writer);
    VisitExtensionRecords(project, writer);
    if (!writer.Problem().empty()) {
        SetError(error, writer.Problem());
        return false;
    }
    return true;
}

// The records go to the file in pieces of this size, laid in one buffer used again and again.
constexpr std::size_t PieceBytes = 512 * 1024;

WriteOutcome WriteProject(const Project& project, const std::filesystem::path& file,
                          std::string* error) {
    if (const auto problem = CountAboveCapacity(project); !problem.empty()) {
        SetError(error, problem);
        return WriteOutcome::Skipped;
    }
    if (IsBlankName(file)) {
        SetError(error, "the file name is blank");
        return WriteOutcome::Skipped;
    }
    RecordCounter counter;
    VisitProjectRecords(project, counter);
    VisitExtensionRecords(project, counter);
    std::string layProblem;
    const PieceProducer pieces = [&project, &layProblem](const WritePiece& write) {
        Bytes buffer;
        buffer.reserve(PieceBytes + ProjectRecordLength);
        ProjectWriter writer(buffer, write, PieceBytes);
        VisitProjectRecords(project, writer);
        VisitExtensionRecords(project, writer);
        layProblem = writer.Problem();
        return layProblem.empty() && writer.Flush();
    };
    std::string problem;
    if (!ReplaceFileHeadInPieces(file, counter.Records() * ProjectRecordLength, pieces, problem)) {
        SetError(error, layProblem.empty() ? problem : layProblem);
        return WriteOutcome::Failed;
    }
    return WriteOutcome::Written;
}

WriteOutcome SaveProject(const Project& project, const std::filesystem::path& workingFile,
                         const std::filesystem::path& namedFile, std::string* error,
                         std::filesystem::path* failed) {
    if (failed != nullptr) {
        *failed = workingFile;
    }
    if (const auto problem = CountAboveCapacity(project); !problem.empty()) {
        SetError(error, problem);
        return WriteOutcome::Skipped;
    }
    if (IsBlankName(workingFile) || IsBlankName(namedFile)) {
        SetError(error, "the file name is blank");
        return WriteOutcome::Skipped;
    }
    Bytes image;
    std::string problem;
    if (!LayProjectImage(project, image, &problem) ||
        !AppendFileTail(workingFile, image, problem) ||
        !ReplaceFile(workingFile, AsText(image), problem, Durability::Unsynced)) {
        SetError(error, problem);
        return WriteOutcome::Failed;
    }
    if (failed != nullptr) {
        *failed = namedFile;
    }
    if (!ReplaceFile(namedFile, AsText(image), problem, Durability::Synced)) {
        SetError(error, problem);
        return WriteOutcome::Failed;
    }
    return WriteOutcome::Written;
}

bool CompareProjectFiles(const std::filesystem::path& workingFile,
                         const std::filesystem::path& namedFile) {
    if (IsBlankName(workingFile) || IsBlankName(namedFile)) {
        return false;
    }
    const std::size_t reach = static_cast<std::size_t>(ComparedRecords) * ProjectRecordLength;
    Bytes working;
    Bytes named;
    std::string ignored;
    ReadFileHead(workingFile, reach, working, ignored);
    ReadFileHead(namedFile, reach, named, ignored);
    for (int number = 1; number <= ComparedRecords; ++number) {
        const auto left = RecordBytes(working, number, ComparedRecordBytes);
        const auto right = RecordBytes(named, number, ComparedRecordBytes);
        if (!std::equal(left.begin(), left.end(), right.begin(), right.end())) {
            return true;
        }
    }
    return false;
}

} // namespace quench
