#pragma once

// The small boxes of the Tools and Help menus: Options, Tip of the Day and About. Their rules
// (ranges, the settings keys, the tips file) live in entry/program_options and entry/tips.

#include "core/dialogs.h"
#include "core/settings.h"
#include "entry/program_options.h"

#include <filesystem>
#include <string>
#include <vector>

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QMessageBox;
class QSpinBox;

namespace quench::gui {

constexpr const char* ProgramVersion = "601.30";

class OptionsDialog : public QDialog {
    Q_OBJECT

public:
    OptionsDialog(IniFileHandler settings, Dialogs& dialogs, char decimalCharacter,
                  QWidget* parent = nullptr);

    // OK: the values are checked and written; false, after a message, when one is refused.
    bool Apply();
    ProgramOptions Shown() const;

    QCheckBox* AutoSave() const { return autoSave_; }
    QSpinBox* AutoSaveMinutes() const { return minutes_; }
    QCheckBox* ConfirmDeletion() const { return confirm_; }
    QSpinBox* VisiblePipes() const { return rows_; }
    QCheckBox* ShowTips() const { return tips_; }
    QLineEdit* CompanyLine() const { return company_; }
    QComboBox* DecimalCharacter() const { return decimal_; }

private:
    IniFileHandler settings_;
    Dialogs& dialogs_;
    QCheckBox* autoSave_;
    QSpinBox* minutes_;
    QCheckBox* confirm_;
    QSpinBox* rows_;
    QCheckBox* tips_;
    QLineEdit* company_;
    QComboBox* decimal_;
};

class TipOfTheDayDialog : public QDialog {
    Q_OBJECT

public:
    TipOfTheDayDialog(const std::filesystem::path& tipsFile, IniFileHandler settings,
                      QWidget* parent = nullptr);

    void ShowNextTip();
    QLabel* Tip() const { return tip_; }
    QCheckBox* ShowAtStartup() const { return showAtStartup_; }

private:
    IniFileHandler settings_;
    std::vector<std::string> tips_;
    std::size_t index_ = 0;
    QLabel* tip_;
    QCheckBox* showAtStartup_;
};

// The program's name, version and the licences of the libraries it is built with.
QString AboutText();
QMessageBox* ShowAbout(QWidget* parent);

} // namespace quench::gui
