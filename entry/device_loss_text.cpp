#include "entry/device_loss_text.h"

#include "calc/pump.h"
#include "entry/field_attributes.h"
#include "entry/field_rules.h"

namespace quench {

std::string DeviceLossText(const PipeRecord& row, const CalculationData& data, MeasureSystem system,
                           char decimalCharacter) {
    if (row.Material == MaterialFirePump && row.DeviceLoss == NotGiven &&
        ProjectHasPumpCurve(data)) {
        return PumpCurveLossText;
    }
    return FieldText(ShownValue(UnitKind::Pressure_Drop, row.DeviceLoss, system),
                     NumberAttributeOf(NumberFieldKind::DeviceLoss), decimalCharacter);
}

std::optional<Single> DeviceLossToStore(std::string_view text, MeasureSystem system,
                                        char decimalCharacter) {
    if (text == PumpCurveLossText) {
        return std::nullopt;
    }
    return static_cast<Single>(
        StoredValue(UnitKind::Pressure_Drop, FieldValue(text, decimalCharacter), system));
}

std::vector<int> LeavePumpRowsToCurve(Project& project) {
    std::vector<int> changed;
    for (int row = 1; row <= MaxPipes; ++row) {
        PipeRecord& record = project.PipeRecord[static_cast<std::size_t>(row)];
        if (record.Material == MaterialFirePump && record.DeviceLoss != NotGiven) {
            record.DeviceLoss = NotGiven;
            changed.push_back(row);
        }
    }
    if (!changed.empty()) {
        project.InputChanged = True;
    }
    return changed;
}

} // namespace quench
