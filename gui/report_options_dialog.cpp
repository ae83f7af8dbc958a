#include "gui/report_options_dialog.h"

#include "gui/qt_text.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFontDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QVBoxLayout>

namespace quench::gui {

namespace {

QString FontCaption(const QString& name, const ReportFont& font) {
    return QString("%1: %2 %3%4%5")
        .arg(name, QString::fromStdString(font.Font.Name))
        .arg(font.Font.Size)
        .arg(font.Font.Bold ? " bold" : "", font.Font.Italic ? " italic" : "");
}

} // namespace

ReportOptionsDialog::ReportOptionsDialog(ReportSource source, IniFileHandler settings,
                                         QWidget* parent)
    : QDialog(parent), source_(std::move(source)), settings_(std::move(settings)),
      options_(LoadReportOptions(settings_)) {
    setObjectName("frmReportOptions");
    setWindowTitle("Report Options");
    auto* columns = new QHBoxLayout;
    auto* left = new QVBoxLayout;
    left->addWidget(SectionBox());
    left->addWidget(FontBox());
    left->addWidget(PageBox());
    columns->addLayout(left);
    view_ = new ReportPageView;
    view_->SetZoom(35);
    auto* scroll = new QScrollArea;
    scroll->setWidget(view_);
    scroll->setMinimumWidth(360);
    columns->addWidget(scroll, 1);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { Accept(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    layout->addWidget(buttons);
    ShowOptions();
    Changed();
}

void ReportOptionsDialog::AddCheck(QWidget* parent, QLayout* layout, const QString& key,
                                   const QString& caption, bool* value) {
    auto* check = new QCheckBox(caption, parent);
    check->setObjectName(key);
    layout->addWidget(check);
    checks_[key] = check;
    values_[key] = value;
    connect(check, &QCheckBox::toggled, this, [this, value](bool on) {
        if (!showing_) {
            *value = on;
            Changed();
        }
    });
}

QWidget* ReportOptionsDialog::SectionBox() {
    auto* box = new QGroupBox("Reports");
    auto* layout = new QVBoxLayout(box);
    for (const ReportSectionName& name : ReportSectionNames()) {
        AddCheck(box, layout, Text(name.Key), Text(name.Caption),
                 &options_.Sections[static_cast<std::size_t>(name.Section)]);
        if (name.Section == ReportSection::InputPipeData) {
            AddCheck(box, layout, "chkInputPipeFittingData", "Input Pipe Fitting Data",
                     &options_.InputPipeFittingData);
        }
    }
    return box;
}

QWidget* ReportOptionsDialog::FontBox() {
    auto* box = new QGroupBox("Fonts and Colors");
    auto* layout = new QGridLayout(box);
    const std::array<std::pair<const char*, ReportFont*>, 3> fonts{
        {{"Main Header", &options_.MainHeader},
         {"Secondary Header", &options_.SecondaryHeader},
         {"Body", &options_.Body}}};
    for (std::size_t row = 0; row < fonts.size(); ++row) {
        ReportFont* font = fonts[row].second;
        auto* fontButton = new QPushButton;
        fontButtons_[row] = fontButton;
        connect(fontButton, &QPushButton::clicked, this, [this, font] { ChooseFont(*font); });
        auto* band = new QPushButton("Color...");
        connect(band, &QPushButton::clicked, this, [this, font] { ChooseColor(font->Band); });
        auto* text = new QPushButton("Text Color...");
        connect(text, &QPushButton::clicked, this, [this, font] { ChooseColor(font->Text); });
        layout->addWidget(fontButton, static_cast<int>(row), 0);
        layout->addWidget(band, static_cast<int>(row), 1);
        layout->addWidget(text, static_cast<int>(row), 2);
    }
    auto* defaults = new QPushButton("Show Default");
    defaults->setObjectName("btnShowDefaultFonts");
    connect(defaults, &QPushButton::clicked, this, [this] { ShowDefaults(); });
    layout->addWidget(defaults, 3, 0);
    return box;
}

QWidget* ReportOptionsDialog::PageBox() {
    auto* box = new QGroupBox("Pages");
    auto* layout = new QVBoxLayout(box);
    AddCheck(box, layout, "chkPageNumbers", "Print page numbers", &options_.PageNumbers);
    AddCheck(box, layout, "chkDate", "Print date in footer", &options_.Date);
    AddCheck(box, layout, "chkFilename", "Print filename in footer", &options_.FileName);
    AddCheck(box, layout, "chkColorGraphs", "Color Graphs", &options_.ColorGraphs);
    AddCheck(box, layout, "chkAutoRefresh", "Auto refresh Print Preview", &options_.AutoRefresh);
    AddCheck(box, layout, "chkPrintLogo", "Print Logo on Title Report", &options_.PrintLogo);
    auto* numbers = new QGridLayout;
    const auto spin = [&](const QString& key, const QString& caption, int row, int minimum,
                          int maximum, int* value) {
        auto* field = new QSpinBox;
        field->setObjectName(key);
        field->setRange(minimum, maximum);
        field->setSpecialValueText(minimum == 0 ? " " : "");
        numbers->addWidget(new QLabel(caption), row, 0);
        numbers->addWidget(field, row, 1);
        connect(field, &QSpinBox::valueChanged, this, [this, value](int number) {
            if (!showing_) {
                *value = number;
                Changed();
            }
        });
        return field;
    };
    startPage_ = spin("txtStartingPageNo", "Starting page:", 0, 0, 9999, &options_.StartingPageNo);
    endPage_ = spin("txtEndingPageNo", "Ending page:", 1, 0, 9999, &options_.EndingPageNo);
    spacing_ = spin("txtLineSpacing", "Line spacing (%):", 2, 50, 400, &options_.LineSpacing);
    layout->addLayout(numbers);
    auto* logoRow = new QHBoxLayout;
    logo_ = new QLineEdit;
    logo_->setObjectName("txtTitlePageLogo");
    connect(logo_, &QLineEdit::editingFinished, this, [this] {
        options_.TitlePageLogo = logo_->text().toStdString();
        Changed();
    });
    auto* browse = new QPushButton("Browse...");
    connect(browse, &QPushButton::clicked, this, [this] {
        const QString file = QFileDialog::getOpenFileName(
            this, "Title Page Logo", logo_->text(), "Pictures (*.jpg *.jpeg *.png *.bmp *.gif)");
        if (!file.isEmpty()) {
            logo_->setText(file);
            options_.TitlePageLogo = file.toStdString();
            Changed();
        }
    });
    logoRow->addWidget(new QLabel("Logo:"));
    logoRow->addWidget(logo_, 1);
    logoRow->addWidget(browse);
    layout->addLayout(logoRow);
    return box;
}

QCheckBox* ReportOptionsDialog::Check(const QString& key) const {
    const auto found = checks_.find(key);
    return found == checks_.end() ? nullptr : found->second;
}

void ReportOptionsDialog::ShowOptions() {
    showing_ = true;
    for (const auto& [key, check] : checks_) {
        check->setChecked(*values_.at(key));
    }
    startPage_->setValue(options_.StartingPageNo);
    endPage_->setValue(options_.EndingPageNo);
    spacing_->setValue(options_.LineSpacing);
    logo_->setText(QString::fromStdString(options_.TitlePageLogo));
    fontButtons_[0]->setText(FontCaption("Main Header", options_.MainHeader));
    fontButtons_[1]->setText(FontCaption("Secondary Header", options_.SecondaryHeader));
    fontButtons_[2]->setText(FontCaption("Body", options_.Body));
    showing_ = false;
}

void ReportOptionsDialog::ChooseFont(ReportFont& font) {
    QFont current(QString::fromStdString(font.Font.Name));
    current.setPointSizeF(font.Font.Size);
    current.setBold(font.Font.Bold);
    current.setItalic(font.Font.Italic);
    bool chosen = false;
    const QFont picked = QFontDialog::getFont(&chosen, current, this);
    if (chosen) {
        font.Font = FontSpec{picked.family().toStdString(), picked.pointSizeF(), picked.bold(),
                             picked.italic()};
        ShowOptions();
        Changed();
    }
}

void ReportOptionsDialog::ChooseColor(Rgb& color) {
    const QColor picked = QColorDialog::getColor(QColor(color.Red, color.Green, color.Blue), this);
    if (picked.isValid()) {
        color =
            Rgb{static_cast<std::uint8_t>(picked.red()), static_cast<std::uint8_t>(picked.green()),
                static_cast<std::uint8_t>(picked.blue())};
        Changed();
    }
}

void ReportOptionsDialog::ShowDefaults() {
    ShowDefaultFonts(options_);
    ShowOptions();
    Changed();
}

void ReportOptionsDialog::Changed() {
    if (!options_.AutoRefresh && previewBuilds_ > 0) {
        return;
    }
    source_.Build(preview_, options_, false);
    ++previewBuilds_;
    view_->SetDocument(&preview_);
    view_->SetPage(1);
}

void ReportOptionsDialog::Accept() {
    SaveReportOptions(settings_, options_);
    accept();
}

} // namespace quench::gui
