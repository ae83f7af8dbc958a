#include "entry/pipe_row_text.h"

#include "calc/build_working_rows.h"
#include "core/formats.h"
#include "core/text.h"
#include "entry/device_loss_text.h"
#include "entry/field_rules.h"
#include "entry/fitting_entry.h"
#include "entry/k_factor_text.h"

#include <cmath>

namespace quench {

namespace {

using enum PipeColumn;

constexpr std::array<char, 4> DeviceLetters{'M', 'B', 'A', 'P'}; // materials 51 to 54

std::string Formatted(double value, PipeColumn column, char decimalCharacter,
                      std::string_view picture) {
    return FieldText(value, NumberAttributeOf(*ColumnInfo(column).Number), decimalCharacter,
                     picture);
}

std::string Shown(double usValue, PipeColumn column, MeasureSystem system, char decimalCharacter,
                  std::string_view picture) {
    const std::optional<UnitKind> unit = ColumnInfo(column).Unit;
    const double value = unit ? ShownValue(*unit, usValue, system) : usValue;
    return Formatted(value, column, decimalCharacter, picture);
}

Single Stored(const RowTexts& texts, PipeColumn column, MeasureSystem system,
              char decimalCharacter) {
    const double value = FieldValue(Trim(texts[column]), decimalCharacter);
    const std::optional<UnitKind> unit = ColumnInfo(column).Unit;
    return static_cast<Single>(unit ? StoredValue(*unit, value, system) : value);
}

void ShowNodeEnd(const PipeRecord& record, bool ending, const Project& project,
                 MeasureSystem system, char decimalCharacter, RowView& view) {
    const auto column = [ending](PipeColumn beginning) { return NodeColumn(beginning, ending); };
    RowTexts& texts = view.Texts;
    texts.Text[static_cast<std::size_t>(column(BegNode))] =
        Trim(ending ? record.EndNode : record.BegNode);
    texts.Text[static_cast<std::size_t>(column(KFactorB))] =
        KFactorFieldText(ending ? record.KFactorE : record.KFactorB, system, decimalCharacter);
    texts.Text[static_cast<std::size_t>(column(ElevationB))] =
        Shown(ending ? record.ElevationE : record.ElevationB, ElevationB, system, decimalCharacter,
              "0.0");
    texts.Text[static_cast<std::size_t>(column(PressEstimateB))] =
        Shown(ending ? record.PressEstimateE : record.PressEstimateB, PressEstimateB, system,
              decimalCharacter, "0.00");
    texts.Text[static_cast<std::size_t>(column(SprinklerAreaB))] =
        Shown(ending ? record.SprinklerAreaE : record.SprinklerAreaB, SprinklerAreaB, system,
              decimalCharacter, "0.0");
    texts.Text[static_cast<std::size_t>(column(AreaGroupB))] =
        Trim(ending ? record.AreaGroupE : record.AreaGroupB);
    texts.Text[static_cast<std::size_t>(column(NonSprinklerFlowB))] =
        Shown(ending ? record.NonSprinklerFlowE : record.NonSprinklerFlowB, NonSprinklerFlowB,
              system, decimalCharacter, "0.0");
    const bool sprinkler = KFactorValue(ending ? record.KFactorE : record.KFactorB,
                                        project.SystemData.DefaultKFactor) != 0;
    (ending ? view.NonSprinklerFlowEnabledE : view.NonSprinklerFlowEnabledB) = !sprinkler;
}

bool MarkedAsInflow(const PipeRecord& record, bool ending, const Project& project) {
    if (IsTrue(ending ? record.EndIsInflow : record.BegIsInflow)) {
        return true;
    }
    const std::string node = Trim(ending ? record.EndNode : record.BegNode);
    return project.InflowNode != 0 && !node.empty() && ToNumber(node) == project.InflowNode;
}

std::string DiameterText(const PipeRecord& record, MeasureSystem system, char decimalCharacter) {
    if (record.Diameter == NotGiven) {
        return {};
    }
    return Shown(record.Diameter, Diameter, system, decimalCharacter, "##0.0##");
}

std::string LossText(const PipeRecord& record, const Project& project, MeasureSystem system,
                     char decimalCharacter) {
    const std::string text =
        DeviceLossText(record, project.CalculationData, system, decimalCharacter);
    if (text != PumpCurveLossText && record.DeviceLoss == NotGiven) {
        return {};
    }
    return text;
}

void ShowPipe(const PipeRecord& record, const Project& project, MeasureSystem system,
              char decimalCharacter, RowView& view) {
    RowTexts& texts = view.Texts;
    const auto set = [&texts](PipeColumn column, std::string text) {
        texts.Text[static_cast<std::size_t>(column)] = std::move(text);
    };
    set(Active, IsTrue(record.Active) ? ActiveCaption : InactiveCaption);
    view.StatusColour = IsTrue(record.Active) ? TextColour::Green : TextColour::Red;
    set(Material, MaterialText(record.Material));
    set(TypeGroup, std::to_string(record.TypeGroup));
    set(DeviceLoss, LossText(record, project, system, decimalCharacter));
    set(Diameter, DiameterText(record, system, decimalCharacter));
    view.DiameterColour = record.Diameter != NotGiven && !IsTrue(record.DiameterFixed)
                              ? TextColour::Red
                              : TextColour::Black;
    set(Length, Shown(record.Length, Length, system, decimalCharacter, "0.0#"));
    set(FittingText, Trim(record.FittingText));
    set(NonStandardFitLength,
        Shown(record.NonStandardFitLength, NonStandardFitLength, system, decimalCharacter, "0.0"));
    set(EquivLength, FieldText(ShownValue(UnitKind::Length, record.TotalEquivLength, system),
                               NumberAttribute{}, decimalCharacter, "##0.0"));
}

} // namespace

PipeRecord EmptyPipeRow(const Project& project) {
    PipeRecord row;
    row.KFactorB = "0";
    row.KFactorE = "0";
    row.Active = True;
    row.Material = project.SystemData.DefaultPipeMaterial;
    row.DeviceLoss = 0;
    row.Diameter = 0;
    return row;
}

bool IsUntypedRow(const PipeRecord& row, const Project& project) {
    PipeRecord untouched;
    untouched.Material = project.SystemData.DefaultPipeMaterial;
    return row == untouched;
}

std::string MaterialText(Integer material) {
    if (material >= MaterialMeter && material <= MaterialFirePump) {
        return std::string(1, DeviceLetters[static_cast<std::size_t>(material - MaterialMeter)]);
    }
    return std::to_string(material);
}

Integer MaterialOfText(std::string_view text) {
    const std::string word = ToUpper(Trim(text));
    if (word.size() == 1) {
        for (std::size_t i = 0; i < DeviceLetters.size(); ++i) {
            if (word.front() == DeviceLetters[i]) {
                return static_cast<Integer>(MaterialMeter + static_cast<Integer>(i));
            }
        }
    }
    return static_cast<Integer>(LibraryMaterialOfText(word));
}

std::string DefaultKFactorText(const Project& project, MeasureSystem system,
                               char decimalCharacter) {
    const double value = ShownValue(UnitKind::K_Factor, project.SystemData.DefaultKFactor, system);
    return FieldText(value, NumberAttribute{}, decimalCharacter, value >= 10 ? "##0.0" : "0.0#");
}

RowView ShowRow(const Project& project, int row, MeasureSystem system, char decimalCharacter) {
    RowView view;
    if (row < 1 || row > MaxPipes) {
        view.Blank = true;
        return view;
    }
    const PipeRecord& record = project.PipeRecord[static_cast<std::size_t>(row)];
    if (IsBlankRow(record) && (IsUntypedRow(record, project) || record == EmptyPipeRow(project))) {
        view.Blank = true;
        return view;
    }
    ShowNodeEnd(record, false, project, system, decimalCharacter, view);
    ShowNodeEnd(record, true, project, system, decimalCharacter, view);
    ShowPipe(record, project, system, decimalCharacter, view);
    view.BeginningIsInflow = MarkedAsInflow(record, false, project);
    view.EndingIsInflow = MarkedAsInflow(record, true, project);
    return view;
}

namespace {

void SaveNodeEnd(PipeRecord& record, bool ending, const RowTexts& texts, MeasureSystem system,
                 char decimalCharacter) {
    const auto touched = [&texts, ending](PipeColumn beginning) {
        return texts.Touched.test(static_cast<std::size_t>(NodeColumn(beginning, ending)));
    };
    const auto text = [&texts, ending](PipeColumn beginning) -> const std::string& {
        return texts[NodeColumn(beginning, ending)];
    };
    const auto number = [&](PipeColumn beginning) {
        return Stored(texts, NodeColumn(beginning, ending), system, decimalCharacter);
    };
    if (touched(BegNode)) {
        (ending ? record.EndNode : record.BegNode) = Trim(text(BegNode));
    }
    if (touched(KFactorB)) {
        (ending ? record.KFactorE : record.KFactorB) =
            KFactorToStore(text(KFactorB), system, decimalCharacter);
    }
    if (touched(ElevationB)) {
        (ending ? record.ElevationE : record.ElevationB) = number(ElevationB);
    }
    if (touched(PressEstimateB)) {
        (ending ? record.PressEstimateE : record.PressEstimateB) = number(PressEstimateB);
    }
    if (touched(SprinklerAreaB)) {
        (ending ? record.SprinklerAreaE : record.SprinklerAreaB) = number(SprinklerAreaB);
    }
    if (touched(AreaGroupB)) {
        (ending ? record.AreaGroupE : record.AreaGroupB) = ToUpper(Trim(text(AreaGroupB)));
    }
    if (touched(NonSprinklerFlowB)) {
        (ending ? record.NonSprinklerFlowE : record.NonSprinklerFlowB) = number(NonSprinklerFlowB);
    }
}

// A diameter in inches: as typed in US units; from millimetres rounded to hundredths in SI.
Single DiameterToStore(std::string_view text, MeasureSystem system, char decimalCharacter) {
    const double value = FieldValue(Trim(text), decimalCharacter);
    if (system == MeasureSystem::US) {
        return static_cast<Single>(value);
    }
    return static_cast<Single>(
        ToNumber(Format(StoredValue(UnitKind::Fine_Length, value, system), "0.00")));
}

void SavePipe(PipeRecord& record, const Project& project, const RowTexts& texts,
              MeasureSystem system, char decimalCharacter) {
    const auto touched = [&texts](PipeColumn column) {
        return texts.Touched.test(static_cast<std::size_t>(column));
    };
    if (touched(Material)) {
        const Integer material = MaterialOfText(texts[Material]);
        record.Material = material != 0 ? material : project.SystemData.DefaultPipeMaterial;
    }
    if (touched(TypeGroup)) {
        record.TypeGroup = static_cast<Integer>(FieldValue(Trim(texts[TypeGroup])));
    }
    if (touched(DeviceLoss)) {
        if (TrimmedView(texts[DeviceLoss]).empty()) {
            record.DeviceLoss = NotGiven;
        } else if (auto loss =
                       DeviceLossToStore(Trim(texts[DeviceLoss]), system, decimalCharacter)) {
            record.DeviceLoss = *loss;
        }
    }
    if (touched(Diameter)) {
        if (TrimmedView(texts[Diameter]).empty()) {
            record.Diameter = NotGiven;
            record.DiameterFixed = False;
        } else {
            record.Diameter = DiameterToStore(texts[Diameter], system, decimalCharacter);
            record.DiameterFixed = ToFlag(record.Diameter != 0);
        }
    }
    if (touched(Length)) {
        record.Length = Stored(texts, Length, system, decimalCharacter);
    }
    if (touched(NonStandardFitLength)) {
        record.NonStandardFitLength = Stored(texts, NonStandardFitLength, system, decimalCharacter);
        record.OldFittingLength = OldFittingLength(record.NonStandardFitLength);
    }
}

} // namespace

bool SaveCurrentRow(Project& project, int row, const RowTexts& texts, MeasureSystem system,
                    char decimalCharacter) {
    if (row < 1 || row > MaxPipes || texts.Touched.none()) {
        return false;
    }
    PipeRecord& record = project.PipeRecord[static_cast<std::size_t>(row)];
    const PipeRecord before = record;
    if (IsUntypedRow(record, project)) {
        record = EmptyPipeRow(project);
    }
    SaveNodeEnd(record, false, texts, system, decimalCharacter);
    SaveNodeEnd(record, true, texts, system, decimalCharacter);
    SavePipe(record, project, texts, system, decimalCharacter);
    return !(record == before);
}

} // namespace quench
