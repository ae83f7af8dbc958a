#pragma once

// frmFirePump: the pump database list, the five points of a curve, Calculate with the curve's
// text and its chart, and the buttons that edit the database or pass the curve to the project.
// The rules live in FirePumpEditor; this window shows them and passes each event on. The points
// show in the unit system chosen and are handed to the rules in the model's units.

#include "core/dialogs.h"
#include "core/project.h"
#include "core/units.h"
#include "entry/fire_pump_editor.h"

#include <array>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace quench::gui {

class PumpCurveChart;

class FirePumpWindow : public QDialog {
    Q_OBJECT

public:
    FirePumpWindow(Project& project, std::filesystem::path database, Dialogs& dialogs,
                   MeasureSystem system = MeasureSystem::US, QWidget* parent = nullptr);

    static constexpr std::string_view ScreenName = "frmFirePump";

    FirePumpEditor& Rules() { return editor_; }
    // The name of a new pump: asked in a box unless a test answers.
    void UseNameSource(std::function<std::optional<std::string>()> source);
    MeasureSystem System() const { return system_; }
    // The points, the curve's text and the chart shown in the other system; nothing held changes.
    void SwitchUnits(MeasureSystem system);

    QComboBox* cboPumpDescription() const { return pumps_; }
    QLineEdit* Text1(int point) const { return flows_.at(point); }
    QLineEdit* Text2(int point) const { return pressures_.at(point); }
    QCheckBox* chkUnits() const { return feetOfHead_; }
    QLabel* CurveLabel() const { return curveText_; }
    PumpCurveChart* Chart() const { return chart_; }
    QComboBox* CopySource() const { return copySource_; }
    QComboBox* uomSystem() const { return units_; }

    // The buttons by their names: "Calculate", "cmdAdd", "cmdCopy", "cmdDel", "cmdSave",
    // "cmdUserDefined", "OKButton", "CancelButton".
    void Command(std::string_view key);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildLayout();
    void Show();
    void ShowPumpList();
    void PointEdited(int point, bool flow);
    void PointLeft(int point, bool flow);
    UnitKind PressureKind() const;
    QString CurveText() const;

    Project& project_;
    FirePumpEditor editor_;
    MeasureSystem system_;
    std::function<std::optional<std::string>()> nameSource_;
    bool closing_ = false;
    QComboBox* pumps_;
    QComboBox* copySource_;
    QComboBox* units_;
    QLabel* flowHeading_;
    QLabel* pressureHeading_;
    std::array<QLineEdit*, MaximumCurvePoints> flows_{};
    std::array<QLineEdit*, MaximumCurvePoints> pressures_{};
    QCheckBox* feetOfHead_;
    QLabel* curveText_;
    QLabel* source_;
    PumpCurveChart* chart_;
};

} // namespace quench::gui
