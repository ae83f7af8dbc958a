#include "gui/program_dialogs.h"

#include "core/settings_keys.h"
#include "entry/tips.h"
#include "gui/qt_text.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace quench::gui {
OptionsDialog::OptionsDialog(IniFileHandler settings, Dialogs& dialogs, char decimalCharacter,
                             QWidget* parent)
    : QDialog(parent), settings_(std::move(settings)), dialogs_(dialogs),
      autoSave_(new QCheckBox("&Save the project automatically")), minutes_(new QSpinBox),
      confirm_(new QCheckBox("&Confirm pipe deletion")), rows_(new QSpinBox),
      tips_(new QCheckBox("Show &tips at start-up")), company_(new QLineEdit),
      decimal_(new QComboBox) {
    setWindowTitle("Options");
    const ProgramOptions options = ReadProgramOptions(settings_, decimalCharacter);
    // The spin boxes allow a little beyond the ranges, so that a refusal says why.
    minutes_->setRange(0, 999);
    minutes_->setSuffix(" minutes");
    rows_->setRange(0, 999);
    company_->setMaxLength(static_cast<int>(CompanyLineLength));
    decimal_->addItem("Point (.)", '.');
    decimal_->addItem("Comma (,)", ',');

    autoSave_->setChecked(options.AutoSave);
    minutes_->setValue(options.AutoSaveMinutes);
    confirm_->setChecked(options.ConfirmPipeDeletion);
    rows_->setValue(options.VisiblePipes);
    tips_->setChecked(options.ShowTipsAtStartup);
    company_->setText(Text(options.CompanyLine));
    decimal_->setCurrentIndex(options.DecimalCharacter == ',' ? 1 : 0);

    auto* form = new QFormLayout;
    form->addRow(autoSave_);
    form->addRow("Auto-save &interval", minutes_);
    form->addRow(confirm_);
    form->addRow("Pipe &rows shown", rows_);
    form->addRow(tips_);
    form->addRow("Company &line of reports", company_);
    form->addRow("&Decimal character", decimal_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        if (Apply()) {
            accept();
        }
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
}

ProgramOptions OptionsDialog::Shown() const {
    ProgramOptions options;
    options.AutoSave = autoSave_->isChecked();
    options.AutoSaveMinutes = minutes_->value();
    options.ConfirmPipeDeletion = confirm_->isChecked();
    options.VisiblePipes = rows_->value();
    options.ShowTipsAtStartup = tips_->isChecked();
    options.CompanyLine = Utf8(company_->text());
    options.DecimalCharacter = decimal_->currentData().toChar().toLatin1();
    return options;
}

bool OptionsDialog::Apply() {
    const ProgramOptions options = Shown();
    if (const std::string problem = ProgramOptionsProblem(options); !problem.empty()) {
        dialogs_.ShowMessage(MessageStyle::Warning, OptionsErrorTitle, problem);
        return false;
    }
    if (!WriteProgramOptions(settings_, options)) {
        dialogs_.ShowMessage(MessageStyle::Critical, OptionsErrorTitle,
                             "The options could not be written to the settings file.");
        return false;
    }
    return true;
}

TipOfTheDayDialog::TipOfTheDayDialog(const std::filesystem::path& tipsFile, IniFileHandler settings,
                                     QWidget* parent)
    : QDialog(parent), settings_(std::move(settings)), tips_(ReadTips(tipsFile)), tip_(new QLabel),
      showAtStartup_(new QCheckBox("&Show tips at start-up")) {
    setWindowTitle(TipOfTheDayTitle);
    tip_->setWordWrap(true);
    tip_->setMinimumSize(380, 90);
    tip_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    // A different tip each time the box opens: the place is kept with the settings.
    const Integer last = settings_.MyGetAppProfileInteger(sections::Options, "LastTip", -1);
    index_ = last >= 0 ? static_cast<std::size_t>(last) : tips_.size() - 1;
    showAtStartup_->setChecked(ShowTipsAtStartup(settings_));
    connect(showAtStartup_, &QCheckBox::toggled, this,
            [this](bool show) { WriteShowTipsAtStartup(settings_, show); });
    auto* next = new QPushButton("&Next Tip");
    connect(next, &QPushButton::clicked, this, &TipOfTheDayDialog::ShowNextTip);
    auto* close = new QPushButton("&Close");
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto* title = new QLabel("<b>Did you know...</b>");
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(showAtStartup_);
    buttons->addStretch();
    buttons->addWidget(next);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(tip_, 1);
    layout->addLayout(buttons);
    next->setEnabled(tips_.size() > 1);
    ShowNextTip();
}

void TipOfTheDayDialog::ShowNextTip() {
    if (tips_.empty()) {
        tip_->setText(NoTipsText);
        return;
    }
    index_ = NextTip(index_, tips_.size());
    tip_->setText(Text(tips_[index_]));
    settings_.MyWriteAppProfileString(sections::Options, "LastTip", std::to_string(index_));
}

QString AboutText() {
    return QString("<h3>Quench %1</h3>"
                   "<p>Hydraulic calculation of fire sprinkler piping systems.</p>"
                   "<p>Built with these libraries:</p><ul>"
                   "<li>Qt %2 &mdash; GNU Lesser General Public License v3 (LGPLv3)</li>"
                   "<li>SuiteSparse AMD &mdash; BSD 3-Clause License</li>"
                   "<li>dxflib &mdash; GNU General Public License v2 or later (GPLv2+)</li>"
                   "</ul><p>GoogleTest (BSD 3-Clause) is used by the tests only and is not "
                   "shipped.</p>")
        .arg(ProgramVersion, qVersion());
}

QMessageBox* ShowAbout(QWidget* parent) {
    auto* box = new QMessageBox(QMessageBox::Information, "About Quench", AboutText(),
                                QMessageBox::Ok, parent);
    box->setTextFormat(Qt::RichText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
    return box;
}

} // namespace quench::gui
