#include "entry/fire_pump_editor.h"

#include "core/formats.h"
#include "core/text.h"
#include "entry/device_loss_text.h"
#include "entry/field_rules.h"
#include "library/pump_curve_text.h"

#include <utility>

namespace quench {

namespace {

constexpr const char* PumpCurveNotValidTitle = "Pump curve not valid";
constexpr const char* PumpCurveNotValidText =
    "You must specify at least 3 pump curve points to produce a usable pump curve.  Do you want "
    "to stay and enter a pump curve?";
constexpr const char* PumpCurveNotCalculatedTitle = "Pump curve not calculated";
constexpr const char* PumpCurveNotCalculatedText =
    "You must press the Calculate button to calculate a pump curve based on the entered data.  If "
    "you do not then the program cannot use your data in the results.  Do you want to stay and "
    "calculate this pump curve?";
constexpr const char* PumpDataTitle = "Pump Data";
constexpr const char* ConfirmDeletionTitle = "Confirm Pump Deletion";

bool IsGiven(const std::string& text) {
    return !TrimmedView(text).empty();
}

// The same curve for the hydraulics: where the points came from does not count.
bool SameProjectPump(const CalculationData& left, const CalculationData& right) {
    return ProjectPumpPoints(left) == ProjectPumpPoints(right) &&
           left.PumpCoefficients == right.PumpCoefficients &&
           IsTrue(left.PumpDefined) == IsTrue(right.PumpDefined);
}

// A change of the project's curve is an edit of a hydraulic input.
void NoteProjectChange(Project& project, const CalculationData& before) {
    if (!SameProjectPump(before, project.CalculationData)) {
        project.InputChanged = True;
    }
}

} // namespace

FirePumpEditor::FirePumpEditor(std::filesystem::path database, Dialogs& dialogs)
    : database_(std::move(database)), dialogs_(dialogs) {}

void FirePumpEditor::Open(const Project& project) {
    ReloadDatabase();
    const CalculationData& data = project.CalculationData;
    const int source = data.PumpSource;
    current_ = source >= 1 && source <= static_cast<int>(pumps_.size()) ? source : 0;
    for (std::size_t point = 0; point < MaximumCurvePoints; ++point) {
        const bool used = IsCurvePoint(data.PumpCurveFlow[point], data.PumpCurvePressure[point]);
        flowText_[point] = used ? NumberText(data.PumpCurveFlow[point]) : "";
        pressureText_[point] = used ? NumberText(data.PumpCurvePressure[point]) : "";
    }
    feetOfHead_ = IsTrue(data.PumpDefined);
    edited_ = false;
    FitFields();
}

std::string FirePumpEditor::CurrentPumpName() const {
    return current_ == 0 ? std::string() : pumps_[static_cast<std::size_t>(current_ - 1)].Name;
}

std::string& FirePumpEditor::FieldText(std::array<std::string, MaximumCurvePoints>& fields,
                                       int point) {
    return fields.at(static_cast<std::size_t>(point));
}

const std::string& FirePumpEditor::FlowText(int point) const {
    return flowText_.at(static_cast<std::size_t>(point));
}

const std::string& FirePumpEditor::PressureText(int point) const {
    return pressureText_.at(static_cast<std::size_t>(point));
}

void FirePumpEditor::SetFlowText(int point, std::string_view text) {
    EditField(flowText_, point, text);
}

void FirePumpEditor::SetPressureText(int point, std::string_view text) {
    EditField(pressureText_, point, text);
}

void FirePumpEditor::EditField(std::array<std::string, MaximumCurvePoints>& fields, int point,
                               std::string_view text) {
    std::string& field = FieldText(fields, point);
    if (field == text) {
        return;
    }
    field = std::string(text);
    MarkEdited();
    ForgetFit();
}

void FirePumpEditor::SetFeetOfHead(bool feetOfHead) {
    if (feetOfHead_ != feetOfHead) {
        feetOfHead_ = feetOfHead;
        MarkEdited(); // the coefficients stay: they are in the unit of the points either way
    }
}

void FirePumpEditor::LeaveFlowField(int point) {
    LeaveField(flowText_, point);
}

void FirePumpEditor::LeavePressureField(int point) {
    LeaveField(pressureText_, point);
}

// The field rules of every numeric field, but an empty field stays empty: it is no point.
void FirePumpEditor::LeaveField(std::array<std::string, MaximumCurvePoints>& fields, int point) {
    const std::string& field = FieldText(fields, point);
    if (!IsGiven(field)) {
        return;
    }
    const LeaveOutcome outcome =
        LeaveNumberField(field, NumberAttributeOf(NumberFieldKind::PumpCurvePoint));
    if (outcome.TooLow) {
        dialogs_.ShowMessage(MessageStyle::Plain, "", ValueTooLowText);
    }
    EditField(fields, point, outcome.Text);
}

std::vector<CurvePoint> FirePumpEditor::GivenPoints() const {
    std::vector<CurvePoint> points;
    for (const CurveSlot& slot : SlotsFromFields()) {
        if (slot.Used) {
            points.push_back(slot.Point);
        }
    }
    return points;
}

CurveSlotArray FirePumpEditor::SlotsFromFields() const {
    CurveSlotArray slots{};
    for (std::size_t point = 0; point < MaximumCurvePoints; ++point) {
        if (IsGiven(flowText_[point]) && IsGiven(pressureText_[point])) {
            slots[point] = CurveSlot{
                true, CurvePoint{ToNumber(flowText_[point]), ToNumber(pressureText_[point])}};
        }
    }
    return slots;
}

bool FirePumpEditor::Calculate() {
    const CurveFitStatus status = FitFields();
    if (status != CurveFitStatus::Fitted) {
        dialogs_.ShowMessage(MessageStyle::Plain, "", CurveFitMessage(status));
        return false;
    }
    return true;
}

// A curve read from a file is shown with its fit, as if Calculate had been pressed; points that
// give none are left for the user to mend, without a message.
CurveFitStatus FirePumpEditor::FitFields() {
    const CurveFit fit = FitPumpCurve(GivenPoints());
    if (fit.Status != CurveFitStatus::Fitted) {
        ForgetFit();
        return fit.Status;
    }
    coefficients_ = fit.Coefficients;
    curveText_ = PumpCurveText(fit.Coefficients, fit.PointCount);
    calculated_ = true;
    return fit.Status;
}

void FirePumpEditor::ForgetFit() {
    calculated_ = false;
    coefficients_ = PumpCoefficientArray{};
    curveText_.clear();
}

void FirePumpEditor::MarkEdited() {
    if (current_ != 0) {
        edited_ = true;
    }
}

void FirePumpEditor::ShowRecord(const PumpRecord& record) {
    for (int point = 0; point < MaximumCurvePoints; ++point) {
        const auto at = static_cast<std::size_t>(point);
        flowText_[at] = IsShownFlow(record, point) ? NumberText(record.Flow[at]) : "";
        pressureText_[at] = IsShownPressure(record, point) ? NumberText(record.Pressure[at]) : "";
    }
    feetOfHead_ = record.FeetOfHead != 0;
}

void FirePumpEditor::ClearFields() {
    flowText_.fill("");
    pressureText_.fill("");
    ForgetFit();
}

PumpRecord FirePumpEditor::RecordFromFields() const {
    PumpRecord record = BlankPumpRecord(CurrentPumpName());
    for (std::size_t point = 0; point < MaximumCurvePoints; ++point) {
        // A half-typed pair keeps its typed half; the other stays unused.
        if (IsGiven(flowText_[point])) {
            record.Flow[point] = ToNumber(flowText_[point]);
        }
        if (IsGiven(pressureText_[point])) {
            record.Pressure[point] = ToNumber(pressureText_[point]);
        }
    }
    record.FeetOfHead = feetOfHead_ ? 1 : 0;
    return record;
}

void FirePumpEditor::OfferToSaveEdits() {
    if (current_ == 0 || !edited_) {
        return;
    }
    const std::string text = "Data for " + CurrentPumpName() + " has been changed. Save?";
    if (dialogs_.Ask(Buttons::YesNo, Answer::Yes, MessageStyle::Question, PumpDataTitle, text) ==
        Answer::Yes) {
        SavePump();
    }
    edited_ = false;
}

void FirePumpEditor::ReloadDatabase() {
    pumps_ = LoadPumpDatabase(database_);
    if (current_ > static_cast<int>(pumps_.size())) {
        current_ = 0;
    }
}

void FirePumpEditor::ReportWriteFailure(const std::string& error) {
    dialogs_.ShowMessage(MessageStyle::Critical, PumpDataTitle,
                         "The fire pump database could not be written: " + error + ".");
}

void FirePumpEditor::ChoosePump(int number) {
    if (number == current_ || number < 1 || number > static_cast<int>(pumps_.size())) {
        return;
    }
    OfferToSaveEdits();
    current_ = number;
    ShowRecord(pumps_[static_cast<std::size_t>(number - 1)]);
    edited_ = false;
    FitFields();
}

bool FirePumpEditor::AddPump(std::string_view name) {
    const std::string trimmed = Trim(name);
    if (trimmed.empty()) {
        return false;
    }
    OfferToSaveEdits();
    const bool keepTypedPoints = current_ == 0;
    std::string error;
    if (!AppendPumpRecord(database_, BlankPumpRecord(trimmed), &error)) {
        ReportWriteFailure(error);
        return false;
    }
    ReloadDatabase();
    current_ = static_cast<int>(pumps_.size());
    if (keepTypedPoints && !GivenPoints().empty()) {
        edited_ = true;
    } else {
        ClearFields();
        edited_ = false;
    }
    return true;
}

void FirePumpEditor::CopyPump(int number) {
    if (number < 1 || number > static_cast<int>(pumps_.size()) || number == current_) {
        return;
    }
    ShowRecord(pumps_[static_cast<std::size_t>(number - 1)]);
    MarkEdited();
    ForgetFit();
}

bool FirePumpEditor::DeletePump() {
    if (current_ == 0) {
        return false;
    }
    const std::string text = "Do you really want to delete " + CurrentPumpName();
    if (dialogs_.Ask(Buttons::YesNo, Answer::No, MessageStyle::Question, ConfirmDeletionTitle,
                     text) != Answer::Yes) {
        return false;
    }
    std::string error;
    if (!DeletePumpRecord(database_, current_, &error)) {
        ReportWriteFailure(error);
        return false;
    }
    current_ = 0;
    edited_ = false;
    ReloadDatabase();
    ClearFields();
    return true;
}

bool FirePumpEditor::SavePump() {
    if (current_ == 0) {
        return false;
    }
    std::string error;
    if (!SavePumpRecord(database_, current_, RecordFromFields(), &error)) {
        ReportWriteFailure(error);
        return false;
    }
    edited_ = false;
    ReloadDatabase();
    return true;
}

void FirePumpEditor::ManualInput() {
    OfferToSaveEdits();
    current_ = 0;
    edited_ = false;
}

bool FirePumpEditor::UsePumpCurve(Project& project) {
    const CalculationData before = project.CalculationData;
    if (static_cast<int>(GivenPoints().size()) < MinimumCurvePoints) {
        if (dialogs_.Ask(Buttons::YesNo, Answer::Yes, MessageStyle::Question,
                         PumpCurveNotValidTitle, PumpCurveNotValidText) == Answer::Yes) {
            return false;
        }
        ClearProjectPump(project.CalculationData);
    } else if (!calculated_) {
        if (dialogs_.Ask(Buttons::YesNo, Answer::Yes, MessageStyle::Question,
                         PumpCurveNotCalculatedTitle, PumpCurveNotCalculatedText) == Answer::Yes) {
            return false;
        }
    } else {
        const Integer source = current_ == 0 ? True : static_cast<Integer>(current_);
        StoreProjectPump(project.CalculationData, SlotsFromFields(), coefficients_, feetOfHead_,
                         source);
        LeavePumpRowsToCurve(project);
    }
    NoteProjectChange(project, before);
    OfferToSaveEdits();
    return true;
}

void FirePumpEditor::Cancel() {
    OfferToSaveEdits();
}

} // namespace quench
