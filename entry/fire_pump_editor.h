#pragma once

// The rules of the fire pump screen without its widgets: the pump list of the database, the five
// points of a curve as typed, the Calculate button with its fit, adding, copying, deleting and
// saving pumps, manual input, and the OK and Cancel buttons that pass the curve to the project or
// not. Every question goes through Dialogs. The fields hold flows in gpm and pressures in psi or
// feet of head (the model's units); a screen showing SI converts at its edge.

#include "core/dialogs.h"
#include "core/project.h"
#include "library/pump_curve.h"
#include "library/pump_database.h"

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace quench {

constexpr const char* FirePumpIntroductionText =
    "You can view, enter, or edit fire pump information here.  Contents of the fire pump "
    "database can be viewed by selecting a pump name from the drop down list at the top of this "
    "window.";
constexpr const char* FirePumpApplyText =
    "To apply a fire pump, you can either enter a constant pump boost in the Loss text box, or "
    "here enter at least 3 data points in any order from a pump curve to determine the "
    "coefficients for the curve.";
constexpr const char* AddPumpTitle = "Add Pump";
constexpr const char* AddPumpPrompt = "Enter name of the new pump.";
constexpr const char* ManualInputCaption = "Manual input";
constexpr const char* FeetOfHeadCaption = "Units: Feet of Head";
constexpr const char* UsePumpCurveCaption = "Cl&ose and use pump curve to determine pump pressure";

class FirePumpEditor {
public:
    FirePumpEditor(std::filesystem::path database, Dialogs& dialogs);

    // The screen opens: the database is read and the project's own curve fills the fields.
    void Open(const Project& project);

    // The pump list (cboPumpDescription) and the pump shown: 1 to the count, or 0 for manual
    // input of typed points.
    const std::vector<PumpRecord>& Pumps() const { return pumps_; }
    int CurrentPump() const { return current_; }
    std::string CurrentPumpName() const;

    // The fields Text1 (flow) and Text2 (pressure), points 0 to 4, and chkUnits.
    const std::string& FlowText(int point) const;
    const std::string& PressureText(int point) const;
    void SetFlowText(int point, std::string_view text);
    void SetPressureText(int point, std::string_view text);
    bool FeetOfHead() const { return feetOfHead_; }
    void SetFeetOfHead(bool feetOfHead);

    // Leaving a field: a value below the field's minimum (-9999) is set to it, with a message.
    void LeaveFlowField(int point);
    void LeavePressureField(int point);

    // The points whose flow and pressure are both given, in field order.
    std::vector<CurvePoint> GivenPoints() const;

    // Edits of the shown database pump that are not saved yet.
    bool HasUnsavedChanges() const { return edited_; }
    // The coefficients belong to the points in the fields.
    bool IsCalculated() const { return calculated_; }
    const PumpCoefficientArray& Coefficients() const { return coefficients_; }
    // The label under the points: "Head = ...", or "" while nothing is calculated.
    const std::string& CurveText() const { return curveText_; }

    // The Calculate button: false, after its message, when the points give no curve.
    bool Calculate();

    // cboPumpDescription: shows pump `number`, asking first to save edits of the one shown.
    void ChoosePump(int number);
    // cmdAdd, with the name the user typed under AddPumpTitle (empty: the user cancelled). The
    // new pump is appended blank and shown; points typed in manual input stay in the fields as
    // its unsaved edits, so that Save keeps them.
    bool AddPump(std::string_view name);
    // cmdCopy: the points (and their unit) of pump `number` into the fields, as edits.
    void CopyPump(int number);
    // cmdDel: after the question, the file is rewritten without the pump shown.
    bool DeletePump();
    // cmdSave: the fields written into the record of the pump shown.
    bool SavePump();
    // cmdUserDefined: leaves the pump list; the fields stay for typing.
    void ManualInput();

    // OKButton: true when the screen closes. The curve goes into the project only when it is
    // calculated; with fewer than three points the user may clear the project's curve instead.
    bool UsePumpCurve(Project& project);
    // CancelButton: the screen closes without passing a curve.
    void Cancel();

private:
    std::string& FieldText(std::array<std::string, MaximumCurvePoints>& fields, int point);
    void EditField(std::array<std::string, MaximumCurvePoints>& fields, int point,
                   std::string_view text);
    void LeaveField(std::array<std::string, MaximumCurvePoints>& fields, int point);
    void MarkEdited();
    void ShowRecord(const PumpRecord& record);
    void ClearFields();
    PumpRecord RecordFromFields() const;
    CurveSlotArray SlotsFromFields() const;
    CurveFitStatus FitFields();
    void ForgetFit();
    void OfferToSaveEdits();
    void ReloadDatabase();
    void ReportWriteFailure(const std::string& error);

    std::filesystem::path database_;
    Dialogs& dialogs_;
    std::vector<PumpRecord> pumps_;
    int current_ = 0;
    std::array<std::string, MaximumCurvePoints> flowText_{};
    std::array<std::string, MaximumCurvePoints> pressureText_{};
    bool feetOfHead_ = false;
    bool edited_ = false;
    bool calculated_ = false;
    PumpCoefficientArray coefficients_{};
    std::string curveText_;
};

} // namespace quench
