#pragma once

// frmReportOptions: the sections to print, the three fonts and their colours, the footer, the
// page range, the line spacing, the logo of the title page, and a small preview that is rebuilt
// on each change while "Auto refresh Print Preview" is on. OK keeps the options in the settings.

#include "core/settings.h"
#include "gui/report_page_view.h"
#include "gui/report_source.h"

#include <array>
#include <map>

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace quench::gui {

class ReportOptionsDialog : public QDialog {
    Q_OBJECT

public:
    ReportOptionsDialog(ReportSource source, IniFileHandler settings, QWidget* parent = nullptr);

    // The options as the screen shows them now.
    ReportOptions Options() const { return options_; }
    // The check box of a key ("chkTitlePage", "chkPageNumbers", ...); null for another key.
    QCheckBox* Check(const QString& key) const;
    int PreviewBuilds() const { return previewBuilds_; }
    // "Show Default" (btnShowDefaultFonts).
    void ShowDefaults();
    // OK: the options into the settings, then close.
    void Accept();

private:
    QWidget* SectionBox();
    QWidget* FontBox();
    QWidget* PageBox();
    void AddCheck(QWidget* parent, class QLayout* layout, const QString& key,
                  const QString& caption, bool* value);
    void ChooseFont(ReportFont& font);
    void ChooseColor(Rgb& color);
    void Changed();
    void ShowOptions();

    ReportSource source_;
    IniFileHandler settings_;
    ReportOptions options_;
    std::map<QString, QCheckBox*> checks_;
    std::map<QString, bool*> values_;
    QSpinBox* startPage_ = nullptr;
    QSpinBox* endPage_ = nullptr;
    QSpinBox* spacing_ = nullptr;
    QLineEdit* logo_ = nullptr;
    std::array<QPushButton*, 3> fontButtons_{};
    PaintedDocument preview_;
    ReportPageView* view_ = nullptr;
    int previewBuilds_ = 0;
    bool showing_ = false;
};

} // namespace quench::gui
