#include "core/project_file.h"
#include "tests/support/independent_writer.h"
#include "tests/support/record_printer.h"
#include "tests/support/scratch_directory.h"

#include <cerrno>
#include <memory>
#include <system_error>

#include <gtest/gtest.h>

namespace quench {
namespace {

// The system's words for a missing file, in the language of the user's locale.
std::string NoSuchFile() {
    return std::generic_category().message(ENOENT);
}

using testing::FileBytes;
using testing::LaidRecord;
using testing::RecordOffset;
using testing::ScratchDirectory;

// A Project holds every table at full size: keep them off the stack.
std::unique_ptr<Project> NewProject() {
    return std::make_unique<Project>();
}

template <class Record>
void ExpectSameRecord(const Record& expected, const Record& actual, const std::string& what) {
    EXPECT_EQ(expected, actual) << what;
}

template <class Rows>
void ExpectSameRows(const Rows& expected, const Rows& actual, const std::string& what) {
    for (std::size_t row = 1; row < expected.size(); ++row) {
        ExpectSameRecord(expected[row], actual[row], what + " row " + std::to_string(row));
    }
}

// Every record and table that the file holds.
void ExpectSameFileContent(const Project& expected, const Project& actual) {
    ExpectSameRecord(expected.ProjectData, actual.ProjectData, "ProjectData");
    ExpectSameRecord(expected.ClientData, actual.ClientData, "ClientData");
    ExpectSameRecord(expected.CompanyData, actual.CompanyData, "CompanyData");
    ExpectSameRecord(expected.BuildingData, actual.BuildingData, "BuildingData");
    ExpectSameRecord(expected.SystemData, actual.SystemData, "SystemData");
    EXPECT_EQ(expected.NumberOfPipeRows, actual.NumberOfPipeRows);
    ExpectSameRows(expected.PipeRecord, actual.PipeRecord, "PipeRecord");
    ExpectSameRecord(expected.TreeBuilderData, actual.TreeBuilderData, "TreeBuilderData");
    ExpectSameRecord(expected.GridBuilderData, actual.GridBuilderData, "GridBuilderData");
    ExpectSameRecord(expected.CalculationData, actual.CalculationData, "CalculationData");
    ExpectSameRows(expected.PipeResultRecord, actual.PipeResultRecord, "PipeResultRecord");
    EXPECT_EQ(expected.NumberOfNodes, actual.NumberOfNodes);
    EXPECT_EQ(expected.NumberOfPipes, actual.NumberOfPipes);
    ExpectSameRows(expected.NodeRecord, actual.NodeRecord, "NodeRecord");
    ExpectSameRows(expected.CalcPipeRecord, actual.CalcPipeRecord, "CalcPipeRecord");
    EXPECT_EQ(expected.MaxNodePressureImbalanceResult, actual.MaxNodePressureImbalanceResult);
    EXPECT_EQ(expected.AvgNodePressureImbalanceResult, actual.AvgNodePressureImbalanceResult);
    EXPECT_EQ(expected.MaxNodeFlowImbalanceResult, actual.MaxNodeFlowImbalanceResult);
    EXPECT_EQ(expected.AvgNodeFlowImbalanceResult, actual.AvgNodeFlowImbalanceResult);
    EXPECT_EQ(expected.InflowNode, actual.InflowNode);
    EXPECT_EQ(expected.UnitSystem, actual.UnitSystem);
    EXPECT_EQ(expected.AlarmDeviceName, actual.AlarmDeviceName);
    EXPECT_EQ(expected.AlarmDeviceShortName, actual.AlarmDeviceShortName);
    EXPECT_EQ(expected.AlarmDeviceCode, actual.AlarmDeviceCode);
    EXPECT_EQ(expected.InputChanged, actual.InputChanged);
}

// What a read of the sample gives, laid as the format has it.
std::unique_ptr<Project> ExpectedAfterRead(const Project& sample, Long format) {
    return testing::ModelAfterReading(sample, testing::ExtensionsOfFormat(format), format);
}

std::unique_ptr<Project> ReadBack(const std::filesystem::path& file) {
    auto project = NewProject();
    EXPECT_TRUE(ReadProject(*project, file));
    return project;
}

void PatchInteger(FileBytes& file, std::size_t offset, Integer value) {
    file[offset] = static_cast<std::uint8_t>(value & 0xFF);
    file[offset + 1] = static_cast<std::uint8_t>((value >> 8) & 0xFF);
}

TEST(ProjectFile, FilesOfEveryFormatReadFieldForField) {
    ScratchDirectory scratch;
    for (const Long format : {60111, 60117, 60120, 60121, 60125, 60130}) {
        SCOPED_TRACE("format " + std::to_string(format));
        auto sample = NewProject();
        testing::FillSampleProject(*sample, 40, 30, 25, 35, format);
        const auto file = scratch / ("sample" + std::to_string(format) + ".qnw");
        testing::SaveFile(file,
                          testing::LayProjectFile(*sample, testing::ExtensionsOfFormat(format)));
        ExpectSameFileContent(*ExpectedAfterRead(*sample, format), *ReadBack(file));
    }
}

TEST(ProjectFile, ReadingRepairsMaterialsUnitsAndDeviceNames) {
    ScratchDirectory scratch;
    auto sample = NewProject();
    testing::FillSampleProject(*sample, 3, 0, 0, 0);
    sample->PipeRecord[1].Material = 60;
    sample->PipeRecord[2].Material = 54;
    sample->PipeRecord[3].Material = 55;
    sample->UnitSystem = 3;
    sample->AlarmDeviceName = "   ";
    sample->AlarmDeviceCode = "";
    testing::SaveFile(scratch / "a.qnw", testing::LayProjectFile(*sample));

    auto project = NewProject();
    project->PipeRecord[4].Material = 9; // beyond the count: the file's default material
    project->PipeRecord[MaxPipes].Material = 9;
    ASSERT_TRUE(ReadProject(*project, scratch / "a.qnw"));
    EXPECT_EQ(project->PipeRecord[1].Material, 4);
    EXPECT_EQ(project->PipeRecord[2].Material, 54);
    EXPECT_EQ(project->PipeRecord[3].Material, 4);
    EXPECT_EQ(project->PipeRecord[4].Material, 17);
    EXPECT_EQ(project->PipeRecord[MaxPipes].Material, 17);
    EXPECT_EQ(project->UnitSystem, 0);
    EXPECT_EQ(project->AlarmDeviceName, "Alarm Check Valve");
    EXPECT_EQ(project->AlarmDeviceShortName, "Deluge");
    EXPECT_EQ(project->AlarmDeviceCode, "ACV");

    for (const Integer units : {-1, 0, 1, 2, 4}) {
        sample->UnitSystem = units;
        testing::SaveFile(scratch / "a.qnw", testing::LayProjectFile(*sample));
        EXPECT_EQ(ReadBack(scratch / "a.qnw")->UnitSystem, units >= 0 && units <= 2 ? units : 0);
    }
}

TEST(ProjectFile, FormatTextComesFromTheFirstDigit) {
    ScratchDirectory scratch;
    struct Case {
        Long Format;
        Integer ProgramVersion;
        bool ReadsDeviceNames;
        bool ReadsInputChanged;
        bool KeepsExteriorHoseFlow;
    };
    const Case cases[] = {
        {60130, 0, true, true, true},     {50130, 0, false, false, false},
        {0, 6013, false, false, false},   {0, 5000, false, false, false},
        {-60130, 0, false, false, false}, {600000, 0, true, true, true},
        {60112, 0, true, false, false},   {60118, 0, true, true, false},
        {60121, 0, true, true, true},     {6, 0, false, false, false},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE("format " + std::to_string(test.Format) + " version " +
                     std::to_string(test.ProgramVersion));
        auto sample = NewProject();
        testing::FillSampleProject(*sample, 2, 1, 1, 1, test.Format);
        sample->ProjectData.ProgramVersion = test.ProgramVersion;
        testing::SaveFile(scratch / "f.qnw", testing::LayProjectFile(*sample));
        const auto project = ReadBack(scratch / "f.qnw");
        EXPECT_EQ(project->AlarmDeviceName,
                  test.ReadsDeviceNames ? "Deluge Valve \xC4" : "Alarm Check Valve");
        EXPECT_EQ(project->AlarmDeviceCode, test.ReadsDeviceNames ? "DV" : "ACV");
        EXPECT_EQ(project->InputChanged, test.ReadsInputChanged ? -1 : 0);
        EXPECT_EQ(project->SystemData.ExteriorHoseFlow, test.KeepsExteriorHoseFlow ? 750 : 0);
        EXPECT_EQ(project->ProjectData.GPDProjectFormat, test.Format);
    }
}

TEST(ProjectFile, StringsThatRunPastTheRecordStopItsReading) {
    ScratchDirectory scratch;
    auto sample = NewProject();
    testing::FillSampleProject(*sample, 4, 2, 0, 2);
    sample->PipeRecord[1].BegNode = "10";
    sample->PipeRecord[1].EndNode = std::string(1200, '7'); // laid cut at the record's end
    sample->PipeRecord[2].BegNode = std::string(255, 'b');
    sample->PipeRecord[2].EndNode = std::string(255, 'e');
    sample->PipeRecord[2].FittingText = std::string(500, 'f'); // 110 + 6 + 1010 bytes
    sample->PipeResultRecord[1].FittingText = std::string(900, 'r');
    sample->CalcPipeRecord[2].FittingText = std::string(900, 'c');
    FileBytes file = testing::LayProjectFile(*sample);
    // Record 9 is pipe row 3: its first String claims the largest length there is.
    PatchInteger(file, RecordOffset(9), -1);
    testing::SaveFile(scratch / "s.qnw", file);

    const auto project = ReadBack(scratch / "s.qnw");
    const PipeRecord reset;
    EXPECT_EQ(project->PipeRecord[1].BegNode, "10");
    EXPECT_EQ(project->PipeRecord[1].EndNode, "");
    EXPECT_EQ(project->PipeRecord[1].KFactorB, "None");
    EXPECT_EQ(project->PipeRecord[1].Diameter, -4.0f);
    EXPECT_EQ(project->PipeRecord[1].Material, 4);
    EXPECT_EQ(project->PipeRecord[2].EndNode, std::string(255, 'e'));
    EXPECT_EQ(project->PipeRecord[2].CadHandle, reset.CadHandle);
    EXPECT_EQ(project->PipeRecord[2].FittingText, "");
    EXPECT_EQ(project->PipeRecord[2].FittingCounts, sample->PipeRecord[2].FittingCounts);
    EXPECT_EQ(project->PipeRecord[2].TotalEquivLength, reset.TotalEquivLength);
    ExpectSameRecord(reset, project->PipeRecord[3], "row with a length of 0xFFFF");
    ExpectSameRecord(sample->PipeRecord[4], project->PipeRecord[4], "row after");
    EXPECT_EQ(project->PipeResultRecord[1].FrictionLossPerFoot,
              sample->PipeResultRecord[1].FrictionLossPerFoot);
    EXPECT_EQ(project->PipeResultRecord[1].TypeGroup, 0);
    EXPECT_EQ(project->CalcPipeRecord[2].FrictionLoss, sample->CalcPipeRecord[2].FrictionLoss);
    EXPECT_EQ(project->CalcPipeRecord[2].FittingLength, 0.0);
    // The records after stay in step.
    ExpectSameRecord(sample->TreeBuilderData, project->TreeBuilderData, "TreeBuilderData");
    ExpectSameRecord(sample->PipeResultRecord[2], project->PipeResultRecord[2], "result row 2");
    EXPECT_EQ(project->AlarmDeviceName, sample->AlarmDeviceName);
}

TEST(ProjectFile, WriterLaysTheSameBytesAsTheIndependentLayout) {
    ScratchDirectory scratch;
    for (const Long format : {60111, 60130}) {
        auto sample = NewProject();
        testing::FillSampleProject(*sample, 12, 9, 11, 10, format);
        ASSERT_EQ(WriteProject(*sample, scratch / "w.qnw"), WriteOutcome::Written);
        // The extension records are written whatever the format.
        EXPECT_EQ(testing::LoadFile(scratch / "w.qnw"), testing::LayProjectFile(*sample));
    }
}

TEST(ProjectFile, WrittenFieldsLieAtTheirOffsetsOnBlanks) {
    ScratchDirectory scratch;
    auto project = NewProject();
    project->ProjectData.Title = "Warehouse";
    project->ProjectData.GPDProjectFormat = 60125;
    project->SystemData.ExteriorHoseFlow = 500;
    project->NumberOfPipeRows = 1;
    project->PipeRecord[1].BegNode = "10";
    project->PipeRecord[1].EndNode = "20";
    project->PipeRecord[1].FittingText = "2E";
    project->PipeRecord[1].CadHandle = "A1";
    project->UnitSystem = 1;
    ASSERT_EQ(WriteProject(*project, scratch / "o.qnw"), WriteOutcome::Written);
    const FileBytes file = testing::LoadFile(scratch / "o.qnw");
    // 5 general records, the count, one row, builders, calculation, two counts, four
    // imbalances, inflow, units, three names and InputChanged.
    ASSERT_EQ(file.size(), 22u * 1000u);
    auto text = [&](std::size_t offset, std::size_t size) {
        return std::string(file.begin() + static_cast<std::ptrdiff_t>(offset),
                           file.begin() + static_cast<std::ptrdiff_t>(offset + size));
    };
    EXPECT_EQ(text(2, 40), "Warehouse" + std::string(31, ' '));
    EXPECT_EQ(text(404, 4), std::string("\xDD\xEA\x00\x00", 4)); // 60125
    EXPECT_EQ(text(408, 592), std::string(592, ' '));
    EXPECT_EQ(text(RecordOffset(5) + 572, 2), std::string("\xF4\x01", 2));
    EXPECT_EQ(text(RecordOffset(5) + 574, 9), "Sprinkler");
    EXPECT_EQ(text(RecordOffset(5) + 583, 417), std::string(417, ' '));
    EXPECT_EQ(text(RecordOffset(6), 3), std::string("\x01\x00 ", 3));
    const std::size_t row = RecordOffset(7);
    EXPECT_EQ(text(row, 8), std::string("\x02\x00"
                                        "10\x02\x00"
                                        "20",
                                        8));
    EXPECT_EQ(text(row + 8, 12), "None  None  ");
    EXPECT_EQ(text(row + 8 + 58, 2), std::string("\x04\x00", 2));         // Material
    EXPECT_EQ(text(row + 8 + 64, 4), std::string("\x00\x00\x80\xC0", 4)); // Diameter -4
    EXPECT_EQ(text(row + 8 + 90, 4), std::string("\x02\x00"
                                                 "2E",
                                                 4));
    EXPECT_EQ(text(row + 12 + 104, 6), "A1    ");
    EXPECT_EQ(text(row + 122, 878), std::string(878, ' '));
    EXPECT_EQ(text(RecordOffset(10) + 162, 2), std::string("\x01\x00", 2)); // DemandMode
    EXPECT_EQ(text(RecordOffset(17), 3), std::string("\x00\x00 ", 3));      // InflowNode
    EXPECT_EQ(text(RecordOffset(18), 3), std::string("\x01\x00 ", 3));      // UnitSystem
    EXPECT_EQ(text(RecordOffset(19), 19), std::string("\x11\x00"
                                                      "Alarm Check Valve",
                                                      19));
    EXPECT_EQ(text(RecordOffset(21), 5), std::string("\x03\x00"
                                                     "ACV",
                                                     5));
}

TEST(ProjectFile, AFullProjectRoundTrips) {
    ScratchDirectory scratch;
    auto sample = NewProject();
    testing::FillSampleProject(*sample, MaxPipes, MaxPipes, MaxPipes, MaxPipes);
    ASSERT_EQ(WriteProject(*sample, scratch / "full.qnw"), WriteOutcome::Written);
    EXPECT_EQ(std::filesystem::file_size(scratch / "full.qnw"), 4021u * 1000u);
    ExpectSameFileContent(*ExpectedAfterRead(*sample, 60130), *ReadBack(scratch / "full.qnw"));
}

TEST(ProjectFile, AnOldFormatKeepsItsNumberAndIgnoresTheNamesItSaved) {
    ScratchDirectory scratch;
    auto sample = NewProject();
    testing::FillSampleProject(*sample, 1, 0, 0, 0, 60111);
    ASSERT_EQ(WriteProject(*sample, scratch / "old.qnw"), WriteOutcome::Written);
    const auto project = ReadBack(scratch / "old.qnw");
    EXPECT_EQ(project->ProjectData.GPDProjectFormat, 60111);
    EXPECT_EQ(project->AlarmDeviceName, "Alarm Check Valve");
    EXPECT_EQ(project->InputChanged, 0);
    EXPECT_EQ(project->SystemData.ExteriorHoseFlow, 0);
}

TEST(ProjectFile, WritingDoesNotTruncateTheFile) {
    ScratchDirectory scratch;
    const auto file = scratch / "t.qnw";
    FileBytes old(100000);
    for (std::size_t index = 0; index < old.size(); ++index) {
        old[index] = static_cast<std::uint8_t>(index * 31 + 7);
    }
    testing::SaveFile(file, old);
    auto project = NewProject();
    ASSERT_EQ(WriteProject(*project, file), WriteOutcome::Written);
    const FileBytes now = testing::LoadFile(file);
    ASSERT_EQ(now.size(), old.size());
    const FileBytes image = testing::LayProjectFile(*project);
    EXPECT_TRUE(std::equal(image.begin(), image.end(), now.begin()));
    EXPECT_TRUE(std::equal(old.begin() + static_cast<std::ptrdiff_t>(image.size()), old.end(),
                           now.begin() + static_cast<std::ptrdiff_t>(image.size())));
    // Only the file itself is left: the temporary file was renamed into place.
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch.Path()), {}), 1);
}

TEST(ProjectFile, WritingFailsCleanly) {
    ScratchDirectory scratch;
    const auto file = scratch / "keep.qnw";
    testing::SaveFile(file, FileBytes(3000, 'k'));
    auto project = NewProject();
    std::string error;

    for (Integer* count :
         {&project->NumberOfPipeRows, &project->NumberOfPipes, &project->NumberOfNodes,
          &project->CalculationData.NumberOfUniquePipeSections}) {
        *count = MaxPipes + 1;
        EXPECT_EQ(WriteProject(*project, file, &error), WriteOutcome::Skipped);
        EXPECT_NE(error.find("1001"), std::string::npos) << error;
        *count = MaxPipes;
    }
    EXPECT_EQ(WriteProject(*project, "", &error), WriteOutcome::Skipped);
    EXPECT_EQ(WriteProject(*project, "   ", &error), WriteOutcome::Skipped);

    project->PipeRecord[7].FittingText = std::string(2000, 'x');
    EXPECT_EQ(WriteProject(*project, file, &error), WriteOutcome::Failed);
    EXPECT_NE(error.find("PipeRecord row 7"), std::string::npos) << error;
    project->PipeRecord[7].FittingText.clear();
    EXPECT_EQ(testing::LoadFile(file), FileBytes(3000, 'k'));

    EXPECT_EQ(WriteProject(*project, scratch / "missing" / "a.qnw", &error), WriteOutcome::Failed);
    EXPECT_NE(error.find(NoSuchFile()), std::string::npos) << error;
    EXPECT_FALSE(std::filesystem::exists(scratch / "missing"));
    EXPECT_EQ(WriteProject(*project, scratch.Path(), &error), WriteOutcome::Failed);
    EXPECT_NE(error.find("directory"), std::string::npos) << error;
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch.Path()), {}), 1);
}

TEST(ProjectFile, WritingFollowsALinkAndKeepsPermissions) {
    ScratchDirectory scratch;
    const auto target = scratch / "real.qnw";
    testing::SaveFile(target, FileBytes(10, 'x'));
    std::filesystem::permissions(target, std::filesystem::perms::owner_read |
                                             std::filesystem::perms::owner_write |
                                             std::filesystem::perms::group_read);
    std::filesystem::create_symlink(target, scratch / "link.qnw");
    auto project = NewProject();
    ASSERT_EQ(WriteProject(*project, scratch / "link.qnw"), WriteOutcome::Written);
    EXPECT_TRUE(std::filesystem::is_symlink(scratch / "link.qnw"));
    EXPECT_EQ(testing::LoadFile(target), testing::LayProjectFile(*project));
    EXPECT_EQ(std::filesystem::status(target).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write |
                  std::filesystem::perms::group_read);
}

TEST(ProjectFile, ReadingAFileThatCannotBeOpenedLeavesTheProject) {
    ScratchDirectory scratch;
    auto project = NewProject();
    project->ProjectData.Title = "kept";
    std::string error;
    EXPECT_FALSE(ReadProject(*project, scratch / "none.qnw", &error));
    EXPECT_NE(error.find(NoSuchFile()), std::string::npos) << error;
    EXPECT_FALSE(ReadProject(*project, scratch.Path(), &error));
    EXPECT_NE(error.find("directory"), std::string::npos) << error;
    EXPECT_FALSE(ReadProjectHeader(*project, scratch / "none.qnw"));
    EXPECT_EQ(project->ProjectData.Title, "kept");
}

TEST(ProjectFile, LoadingATemplateSkipsTheOutputTablesInStep) {
    ScratchDirectory scratch;
    auto sample = NewProject();
    testing::FillSampleProject(*sample, 5, 6, 7, 8);
    testing::SaveFile(scratch / "AUTOLOAD.QNW", testing::LayProjectFile(*sample));
    auto project = NewProject();
    project->LoadingTemplate = true;
    ASSERT_TRUE(ReadProject(*project, scratch / "AUTOLOAD.QNW"));
    const Project reset;
    ExpectSameRecord(sample->CalculationData, project->CalculationData, "CalculationData");
    ExpectSameRows(reset.PipeResultRecord, project->PipeResultRecord, "PipeResultRecord");
    ExpectSameRows(reset.NodeRecord, project->NodeRecord, "NodeRecord");
    ExpectSameRows(reset.CalcPipeRecord, project->CalcPipeRecord, "CalcPipeRecord");
    EXPECT_EQ(project->NumberOfNodes, 7);
    EXPECT_EQ(project->NumberOfPipes, 8);
    EXPECT_EQ(project->MaxNodePressureImbalanceResult, sample->MaxNodePressureImbalanceResult);
    EXPECT_EQ(project->InflowNode, sample->InflowNode);
    EXPECT_EQ(project->UnitSystem, 2);
    EXPECT_EQ(project->AlarmDeviceName, sample->AlarmDeviceName);
    EXPECT_EQ(project->InputChanged, -1);
}

TEST(ProjectFile, HeaderReadsTheGeneralRecordsOnly) {
    ScratchDirectory scratch;
    auto sample = NewProject();
    testing::FillSampleProject(*sample, 5, 1, 1, 1);
    FileBytes file = testing::LayProjectFile(*sample);
    testing::SaveFile(scratch / "h.qnw", file);
    auto project = NewProject();
    ASSERT_TRUE(ReadProjectHeader(*project, scratch / "h.qnw"));
    ExpectSameRecord(sample->ProjectData, project->ProjectData, "ProjectData");
    ExpectSameRecord(sample->ClientData, project->ClientData, "ClientData");
    ExpectSameRecord(sample->CompanyData, project->CompanyData, "CompanyData");
    ExpectSameRecord(sample->BuildingData, project->BuildingData, "BuildingData");
    ExpectSameRecord(sample->SystemData, project->SystemData, "SystemData");
    EXPECT_EQ(project->NumberOfPipeRows, 0);
    EXPECT_EQ(project->AlarmDeviceName, "Alarm Check Valve");
    EXPECT_EQ(project->TreeBuilderData, TreeBuilderData{});

    // A file that ends inside the comment of record 4: the rest keeps its values.
    file.resize(RecordOffset(4) + 479);
    testing::SaveFile(scratch / "short.qnw", file);
    auto partial = NewProject();
    ASSERT_TRUE(ReadProjectHeader(*partial, scratch / "short.qnw"));
    EXPECT_EQ(partial->CompanyData, sample->CompanyData);
    EXPECT_EQ(partial->BuildingData.Fax, sample->BuildingData.Fax);
    EXPECT_EQ(partial->BuildingData.Comment, "");
    EXPECT_EQ(partial->BuildingData.PrintComment, 0);
    EXPECT_EQ(partial->SystemData, SystemData{});
}

TEST(ProjectFile, CompareSeesTheFirst640BytesOfRecordsUpTo4100) {
    ScratchDirectory scratch;
    const auto working = scratch / "p.tmp";
    const auto named = scratch / "p.qnw";
    FileBytes base(5000 * 1000, ' ');
    for (std::size_t index = 0; index < base.size(); index += 13) {
        base[index] = static_cast<std::uint8_t>(index % 251);
    }
    testing::SaveFile(named, base);
    auto differs = [&](const FileBytes& bytes) {
        testing::SaveFile(working, bytes);
        return CompareProjectFiles(working, named);
    };
    EXPECT_FALSE(differs(base));
    for (const int record : {1, 5, 4100}) {
        for (const std::size_t offset : {0u, 639u, 640u, 999u}) {
            FileBytes changed = base;
            changed[RecordOffset(record) + offset] ^= 0x01;
            EXPECT_EQ(differs(changed), offset < 640)
                << "record " << record << " offset " << offset;
        }
    }
    FileBytes beyond = base;
    beyond[RecordOffset(4101)] ^= 0x01;
    EXPECT_FALSE(differs(beyond));
    // A record that one file has and the other lacks.
    FileBytes shorter(base.begin(), base.begin() + static_cast<std::ptrdiff_t>(RecordOffset(3001)));
    EXPECT_TRUE(differs(shorter));
    // The bytes past 640 of the last record do not count.
    testing::SaveFile(named, shorter);
    shorter.resize(RecordOffset(3000) + 640);
    EXPECT_FALSE(differs(shorter));
    shorter.resize(RecordOffset(3000) + 639);
    EXPECT_TRUE(differs(shorter));

    EXPECT_FALSE(CompareProjectFiles(working, ""));
    EXPECT_FALSE(CompareProjectFiles("", named));
    EXPECT_TRUE(CompareProjectFiles(scratch / "no.tmp", named));
    EXPECT_FALSE(CompareProjectFiles(scratch / "no.tmp", scratch / "no.qnw"));
}

TEST(ProjectFile, ANewProjectReadsBackAsAReset) {
    ScratchDirectory scratch;
    const auto project = NewProject();
    ASSERT_EQ(WriteProject(*project, scratch / "n.qnw"), WriteOutcome::Written);
    ExpectSameFileContent(*project, *ReadBack(scratch / "n.qnw"));
    EXPECT_EQ(testing::LoadFile(scratch / "n.qnw"), testing::LayProjectFile(*project));
}

} // namespace
} // namespace quench
