// Damaged and hostile project files: truncated anywhere, counts out of range, Strings that claim
// more than their record, random bytes and flipped bits. Every read must finish, keep the model
// within its tables, read what can be read and leave the rest at the reset values. Runs under the
// sanitizers with the rest of the suite.

#include "core/project_file.h"
#include "core/project_json.h"
#include "tests/support/independent_writer.h"
#include "tests/support/record_printer.h"
#include "tests/support/scratch_directory.h"

#include <algorithm>
#include <fstream>
#include <memory>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

namespace quench {
namespace {

using testing::FileBytes;
using testing::RecordOffset;
using testing::ScratchDirectory;

// The sample file of these tests and where its records lie.
struct Sample {
    static constexpr int PipeRows = 6;
    static constexpr int Results = 4;
    static constexpr int Nodes = 5;
    static constexpr int Pipes = 5;
    static constexpr int PipeRowsRecord = 6;
    static constexpr int FirstPipeRecord = 7;
    static constexpr int CalculationRecord = FirstPipeRecord + PipeRows + 2;
    static constexpr int FirstResultRecord = CalculationRecord + 1;
    static constexpr int NodesRecord = FirstResultRecord + Results;
    static constexpr int PipesRecord = NodesRecord + 1;
    static constexpr int FirstCalcPipeRecord = PipesRecord + 1 + Nodes;
    static constexpr int DeviceNameRecord = FirstCalcPipeRecord + Pipes + 6;

    Sample() : Model(std::make_unique<Project>()) {
        testing::FillSampleProject(*Model, PipeRows, Results, Nodes, Pipes);
        Bytes = testing::LayProjectFile(*Model);
    }

    std::unique_ptr<Project> Model;
    FileBytes Bytes;
};

class HostileFile : public ::testing::Test {
protected:
    // Reads the bytes into a freshly reset project and checks that the model stays usable.
    const Project& Read(const FileBytes& bytes) {
        ResetProject(*project_);
        ReadProjectImage(*project_, bytes);
        ExpectUsable(*project_);
        // The JSON of a model with full tables is long: shown for every seventh file only.
        if (reads_++ % 7 == 0) {
            ExpectShowable(*project_);
        }
        return *project_;
    }

    // A model read from any bytes lays the same bytes again after a second reading. A model
    // with a count above capacity is not written at all, and one whose texts fill a record
    // cannot be.
    void ExpectStableRoundTrip(const Project& project) {
        const int largest =
            std::max({project.NumberOfPipeRows, project.NumberOfNodes, project.NumberOfPipes,
                      project.CalculationData.NumberOfUniquePipeSections});
        FileBytes first;
        if (largest > MaxPipes || !LayProjectImage(project, first)) {
            return;
        }
        ResetProject(*again_);
        ReadProjectImage(*again_, first);
        FileBytes second;
        ASSERT_TRUE(LayProjectImage(*again_, second));
        EXPECT_EQ(first, second);
    }

    static void ExpectUsable(const Project& project) {
        ASSERT_EQ(project.PipeRecord.size(), MaxPipes + 1u);
        ASSERT_EQ(project.PipeResultRecord.size(), MaxPipes + 1u);
        ASSERT_EQ(project.NodeRecord.size(), MaxNodes + 1u);
        ASSERT_EQ(project.CalcPipeRecord.size(), MaxPipes + 1u);
        EXPECT_GE(project.UnitSystem, 0);
        EXPECT_LE(project.UnitSystem, 2);
        const int rows = std::clamp<int>(project.NumberOfPipeRows, 0, MaxPipes);
        for (int row = 1; row <= rows; ++row) {
            ASSERT_LE(project.PipeRecord[row].Material, 54);
        }
        EXPECT_FALSE(project.AlarmDeviceName.find_first_not_of(' ') == std::string::npos);
        EXPECT_FALSE(project.AlarmDeviceShortName.find_first_not_of(' ') == std::string::npos);
        EXPECT_FALSE(project.AlarmDeviceCode.find_first_not_of(' ') == std::string::npos);
    }

    static void ExpectShowable(const Project& project) {
        std::ostringstream json;
        WriteProjectJson(project, json);
        EXPECT_TRUE(json.str().ends_with("\n}\n"));
    }

    ScratchDirectory scratch_;
    std::unique_ptr<Project> project_ = std::make_unique<Project>();
    std::unique_ptr<Project> again_ = std::make_unique<Project>();
    int reads_ = 0;
    Sample sample_;
};

void PatchInteger(FileBytes& file, std::size_t offset, Integer value) {
    file[offset] = static_cast<std::uint8_t>(value & 0xFF);
    file[offset + 1] = static_cast<std::uint8_t>((value >> 8) & 0xFF);
}

TEST_F(HostileFile, TruncatedAnywhereReadsWhatLiesBeforeTheCut) {
    const FileBytes& whole = sample_.Bytes;
    std::vector<std::size_t> cuts;
    for (std::size_t cut = 0; cut <= whole.size(); cut += 97) {
        cuts.push_back(cut);
    }
    for (std::size_t record = 1; record * 1000 <= whole.size(); ++record) {
        cuts.push_back(record * 1000 - 1);
        cuts.push_back(record * 1000 + 1);
    }
    for (const std::size_t cut : cuts) {
        SCOPED_TRACE("cut at " + std::to_string(cut));
        const FileBytes bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(cut));
        const Project& project = Read(bytes);
        const Project& model = *sample_.Model;
        EXPECT_EQ(project.ProjectData.Title, cut >= 42 ? model.ProjectData.Title : "");
        if (cut >= 408) {
            EXPECT_EQ(project.ProjectData, model.ProjectData);
        }
        if (cut >= RecordOffset(5) + 583) {
            EXPECT_EQ(project.SystemData, model.SystemData);
        }
        const std::size_t calculation = RecordOffset(Sample::CalculationRecord);
        EXPECT_EQ(project.CalculationData.NumberOfUniquePipeSections,
                  cut >= calculation + 484 ? Sample::Results : 0);
        if (cut >= calculation + 640) {
            EXPECT_EQ(project.CalculationData, model.CalculationData);
        }
        if (cut % 5 == 0) {
            ExpectStableRoundTrip(project);
        }
    }
    // Cut inside a record: the fields before the cut are read, the others keep their values.
    const FileBytes bytes(whole.begin(),
                          whole.begin() + static_cast<std::ptrdiff_t>(RecordOffset(5) + 560));
    const Project& project = Read(bytes);
    EXPECT_EQ(project.SystemData.CalculatedFlowRate, sample_.Model->SystemData.CalculatedFlowRate);
    EXPECT_EQ(project.SystemData.SecondTestStaticPressure, 0.0f);
    EXPECT_EQ(project.SystemData.PrimaryDischargeName, "Sprinkler");
    EXPECT_EQ(project.NumberOfPipeRows, 0);
}

TEST_F(HostileFile, CountsOutOfRangeNeverReachPastTheTables) {
    const std::size_t countOffsets[] = {
        RecordOffset(Sample::PipeRowsRecord),
        RecordOffset(Sample::CalculationRecord) + 482,
        RecordOffset(Sample::NodesRecord),
        RecordOffset(Sample::PipesRecord),
    };
    for (const std::size_t offset : countOffsets) {
        for (const Integer count : {-1, 0, 1, 999, 1000, 1001, 32767, -32768}) {
            SCOPED_TRACE("count " + std::to_string(count) + " at " + std::to_string(offset));
            FileBytes bytes = sample_.Bytes;
            PatchInteger(bytes, offset, count);
            const Project& project = Read(bytes);
            // The records before the count are untouched by it.
            EXPECT_EQ(project.SystemData, sample_.Model->SystemData);
            ExpectStableRoundTrip(project);
        }
    }
}

TEST_F(HostileFile, RowsBeyondCapacityAreSkippedInStep) {
    auto sample = std::make_unique<Project>();
    testing::FillSampleProject(*sample, MaxPipes, 2, 3, 4);
    FileBytes bytes = testing::LayProjectFile(*sample);
    // One more pipe row than the table holds.
    const auto extra = static_cast<std::ptrdiff_t>(RecordOffset(7 + MaxPipes));
    bytes.insert(bytes.begin() + extra, 1000, 'x');
    PatchInteger(bytes, RecordOffset(6), MaxPipes + 1);
    const Project& project = Read(bytes);
    EXPECT_EQ(project.NumberOfPipeRows, MaxPipes + 1);
    EXPECT_EQ(project.PipeRecord[MaxPipes], sample->PipeRecord[MaxPipes]);
    EXPECT_EQ(project.TreeBuilderData, sample->TreeBuilderData);
    EXPECT_EQ(project.CalcPipeRecord[4], sample->CalcPipeRecord[4]);
    EXPECT_EQ(project.AlarmDeviceName, sample->AlarmDeviceName);
    EXPECT_EQ(project.InputChanged, -1);
    std::string error;
    EXPECT_EQ(WriteProject(project, scratch_ / "no.qnw", &error), WriteOutcome::Skipped);
    EXPECT_FALSE(std::filesystem::exists(scratch_ / "no.qnw"));
}

TEST_F(HostileFile, TheRecordCounterStopsAtItsLargestValue) {
    // A sparse file that reaches the last record the counter can name.
    FileBytes head = sample_.Bytes;
    head.resize(RecordOffset(Sample::FirstPipeRecord));
    PatchInteger(head, RecordOffset(Sample::PipeRowsRecord), 32767);
    const auto file = scratch_ / "sparse.qnw";
    testing::SaveFile(file, head);
    std::filesystem::resize_file(file, RecordOffset(LastRecordNumber + 1));
    {
        std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
        stream.seekp(static_cast<std::streamoff>(RecordOffset(LastRecordNumber)));
        const float marker = 1234.5f;
        stream.write(reinterpret_cast<const char*>(&marker), sizeof marker);
    }
    ResetProject(*project_);
    ASSERT_TRUE(ReadProject(*project_, file));
    ExpectUsable(*project_);
    // Every record after the rows is read from the last one.
    EXPECT_EQ(project_->TreeBuilderData.CrossDiameter, 1234.5f);
    EXPECT_EQ(project_->GridBuilderData.PerimeterDiameter, 1234.5f);
    EXPECT_EQ(project_->NumberOfPipeRows, 32767);
}

TEST_F(HostileFile, StringLengthsPastTheRecord) {
    const PipeRecord& row = sample_.Model->PipeRecord[1];
    const std::size_t pipe = RecordOffset(Sample::FirstPipeRecord);
    const std::size_t endNode = pipe + 2 + row.BegNode.size();
    const std::size_t fittingText = endNode + 2 + row.EndNode.size() + 90;
    const CalcPipeRecord& calc = sample_.Model->CalcPipeRecord[1];
    const std::size_t calcPipe = RecordOffset(Sample::FirstCalcPipeRecord);
    const std::size_t stringOffsets[] = {
        pipe,
        endNode,
        fittingText,
        RecordOffset(Sample::FirstResultRecord) + 116,
        calcPipe + 32,
        calcPipe + 32 + 2 + calc.ResultFittingText.size() + 80,
        RecordOffset(Sample::DeviceNameRecord),
        RecordOffset(Sample::DeviceNameRecord + 2),
    };
    for (const std::size_t offset : stringOffsets) {
        for (const int length :
             {0xFFFF, 0x8000, 1000, 999, 998 - static_cast<int>(offset % 1000)}) {
            SCOPED_TRACE("length " + std::to_string(length) + " at " + std::to_string(offset));
            FileBytes bytes = sample_.Bytes;
            PatchInteger(bytes, offset, static_cast<Integer>(length));
            const Project& project = Read(bytes);
            // One record cut short: the next row is read in step.
            EXPECT_EQ(project.PipeRecord[2], sample_.Model->PipeRecord[2]);
            EXPECT_EQ(project.NodeRecord[2], sample_.Model->NodeRecord[2]);
            ExpectStableRoundTrip(project);
        }
    }
}

TEST_F(HostileFile, RandomBytes) {
    for (unsigned seed = 1; seed <= 100; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        FileBytes bytes(random() % 60000);
        // Half of the files begin as a real project, so that the damage lies deeper.
        const std::size_t kept =
            seed % 2 == 0 ? std::min(bytes.size(), sample_.Bytes.size() / 2) : 0;
        std::copy(sample_.Bytes.begin(), sample_.Bytes.begin() + static_cast<std::ptrdiff_t>(kept),
                  bytes.begin());
        for (std::size_t index = kept; index < bytes.size(); ++index) {
            bytes[index] = static_cast<std::uint8_t>(random());
        }
        const Project& project = Read(bytes);
        if (seed % 10 == 0) {
            ExpectStableRoundTrip(project);
        }
    }
}

TEST_F(HostileFile, FlippedBits) {
    std::mt19937 random(20240613);
    for (int flip = 0; flip < 300; ++flip) {
        FileBytes bytes = sample_.Bytes;
        const int changes = flip % 4 == 0 ? 25 : 1;
        for (int change = 0; change < changes; ++change) {
            bytes[random() % bytes.size()] ^= static_cast<std::uint8_t>(1u << (random() % 8));
        }
        SCOPED_TRACE("flip " + std::to_string(flip));
        const Project& project = Read(bytes);
        if (flip % 20 == 0) {
            ExpectStableRoundTrip(project);
        }
    }
}

// What a read must give for some of the files, beyond being usable.
void ExpectCorpusFacts(const std::string& name, const Project& project) {
    if (name == "cut_inside_pipe_row.qnw") {
        EXPECT_EQ(project.PipeRecord[1].Diameter, 1.0f);
        EXPECT_EQ(project.PipeRecord[2].EndNode, "30");
        EXPECT_EQ(project.PipeRecord[2].Diameter, -4.0f);
    } else if (name == "strings_past_record.qnw") {
        EXPECT_EQ(project.PipeRecord[1], PipeRecord{});
        EXPECT_EQ(project.PipeRecord[2].Diameter, 1.0f);
        EXPECT_EQ(project.PipeRecord[2].FittingText, "");
        EXPECT_EQ(project.PipeRecord[3].EndNode, "40");
    } else if (name == "format_60111.qnw") {
        EXPECT_EQ(project.AlarmDeviceName, "Alarm Check Valve");
        EXPECT_EQ(project.SystemData.ExteriorHoseFlow, 0);
    } else if (name == "bad_material_units.qnw") {
        EXPECT_EQ(project.PipeRecord[2].Material, 4);
        EXPECT_EQ(project.PipeRecord[2].FittingText, "2E");
        EXPECT_EQ(project.UnitSystem, 0);
        EXPECT_EQ(project.SystemData.ExteriorHoseFlow, 500);
    } else if (name == "huge_counts.qnw") {
        EXPECT_EQ(project.NumberOfPipeRows, 32767);
        EXPECT_EQ(project.PipeRecord[2].EndNode, "30");
    } else if (name == "negative_counts.qnw") {
        EXPECT_EQ(project.NumberOfPipeRows, -1);
        EXPECT_EQ(project.PipeRecord[1].Material, 4);
    }
}

TEST_F(HostileFile, CheckedInCorpus) {
    const auto corpus = testing::SourceDirectory() / "tests" / "data" / "corpus";
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(corpus)) {
        if (entry.path().extension() != ".qnw") {
            continue;
        }
        const std::string name = entry.path().filename().string();
        SCOPED_TRACE(name);
        ++files;
        ResetProject(*project_);
        ASSERT_TRUE(ReadProject(*project_, entry.path()));
        ExpectUsable(*project_);
        ExpectShowable(*project_);
        ExpectCorpusFacts(name, *project_);
        ExpectStableRoundTrip(*project_);
    }
    EXPECT_EQ(files, 12);
}

} // namespace
} // namespace quench
