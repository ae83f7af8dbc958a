#include "gui/drawing_options_dialog.h"

#include "core/formats.h"
#include "gui/qt_text.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace quench::gui {

namespace {

constexpr const char* FromDrawing = "From the drawing ($INSUNITS)";
const char* const UnitNames[] = {"in", "ft", "mm", "cm", "m"};

QString JoinedLayers(const std::vector<std::string>& words) {
    QStringList list;
    for (const auto& word : words) {
        list << QString::fromStdString(word);
    }
    return list.join(",");
}

} // namespace

DrawingOptionsDialog::DrawingOptionsDialog(const DrawingImportOptions& current, QWidget* parent)
    : QDialog(parent), base_(current),
      layers_(new QLineEdit(JoinedLayers(current.PipeLayers), this)),
      snap_(new QLineEdit(QString::fromStdString(NumberText(current.SnapFeet)), this)),
      units_(new QComboBox(this)),
      excludeFittings_(new QCheckBox("Do not include fittings in import", this)),
      excludeDiameters_(new QCheckBox("Do not include pipe diameters in import", this)),
      numberTexts_(new QCheckBox("Number nodes from the drawing's number texts", this)),
      note_(new QLabel(this)) {
    setObjectName("frmDXFImportOptions");
    setWindowTitle(Text(drawing_texts::OptionsTitle));
    layers_->setObjectName("txtLayers");
    snap_->setObjectName("txtSnap");
    units_->setObjectName("cboUnits");
    excludeFittings_->setObjectName("chkExcludeFit");
    excludeDiameters_->setObjectName("chkExcludeDiam");
    numberTexts_->setObjectName("chkNumberTexts");
    units_->addItem(FromDrawing);
    for (const char* name : UnitNames) {
        units_->addItem(name);
    }
    if (current.Unit) {
        units_->setCurrentText(QString::fromStdString(current.Unit->Name));
    }
    excludeFittings_->setChecked(current.ExcludeFittings);
    excludeDiameters_->setChecked(current.ExcludeDiameters);
    numberTexts_->setChecked(current.NumberFromTexts);
    excludeFittings_->setToolTip("If checked, fitting blocks (tees, elbows, valves) at the nodes "
                                 "add no equivalent length to the pipes.");
    excludeDiameters_->setToolTip("If checked, sizes in layer names are left out and "
                                  "Autosizing calculates the pipe diameters.");
    note_->setStyleSheet("color: #a00000");

    auto* form = new QFormLayout;
    form->addRow("Pipe &layers (names containing, comma-separated):", layers_);
    form->addRow("&Snap distance (ft):", snap_);
    form->addRow("Drawing &unit:", units_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName("cmdOK");
    connect(buttons, &QDialogButtonBox::accepted, this, &DrawingOptionsDialog::Accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(excludeFittings_);
    layout->addWidget(excludeDiameters_);
    layout->addWidget(numberTexts_);
    layout->addWidget(note_);
    layout->addWidget(buttons);
}

std::optional<DrawingImportOptions> DrawingOptionsDialog::Chosen() const {
    DrawingImportOptions options = base_;
    options.PipeLayers = SplitLayerList(layers_->text().toStdString());
    const std::string snap = snap_->text().trimmed().toStdString();
    if (options.PipeLayers.empty() || !IsNumeric(snap) || ToNumber(snap) < 0) {
        return std::nullopt;
    }
    options.SnapFeet = ToNumber(snap);
    options.Unit = units_->currentIndex() == 0
                       ? std::nullopt
                       : DrawingUnitNamed(units_->currentText().toStdString());
    options.ExcludeFittings = excludeFittings_->isChecked();
    options.ExcludeDiameters = excludeDiameters_->isChecked();
    options.NumberFromTexts = numberTexts_->isChecked();
    return options;
}

void DrawingOptionsDialog::Accept() {
    if (Chosen()) {
        accept();
        return;
    }
    note_->setText("Name at least one pipe layer and give a snap distance of 0 ft or more.");
}

std::optional<DrawingImportOptions> AskDrawingOptions(const DrawingImportOptions& current,
                                                      QWidget* parent) {
    DrawingOptionsDialog dialog(current, parent);
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return dialog.Chosen();
}

} // namespace quench::gui
