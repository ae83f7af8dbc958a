#pragma once

// One frame of global edit, "Pipe" or "Node": the selection, a check box with a current and a new
// field for each item, and the commands Current Values, Execute, Delete and Duplicate. The frame
// only lays out the fields and hands their texts to the rules (GlobalEdit).

#include "entry/global_edit.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

#include <QComboBox>
#include <QGroupBox>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace quench::gui {

class ValidatedField;

// An editable field whose list is filled when it opens, from the rows as they stand then.
class ValueBox : public QComboBox {
    Q_OBJECT

public:
    using Source = std::function<std::vector<std::string>()>;
    ValueBox(Source source, QWidget* parent = nullptr);

    ValidatedField* Field() const { return field_; }
    QString Text() const { return currentText(); }
    // The list again from its source; the typed text stays.
    void FillList();
    void showPopup() override;

private:
    Source source_;
    ValidatedField* field_;
};

enum class GlobalCommand { Execute, Delete, Duplicate };

// The property of a field or button that holds the key of its help (F1).
inline constexpr const char* HelpKeyProperty = "helpKey";

class GlobalEditFrame : public QGroupBox {
    Q_OBJECT

public:
    GlobalEditFrame(GlobalEdit& rules, GlobalFrame frame, QWidget* parent = nullptr);

    GlobalFrame Frame() const { return frame_; }
    // The texts of the fields into the rules, before a command.
    void Take();
    // The limits and unit words of the fields for the units on screen, the captions in the
    // project's discharge word.
    void ShowUnits();
    // The node frame's sprinkler area total.
    void ShowTotal(const QString& text);
    // cmdPipeCurrentValues / cmdNodeCurrentValues: every current list from the selection.
    void FillCurrentLists();

signals:
    void CommandWanted(GlobalFrame frame, GlobalCommand command);
    void StatusTextWanted(const QString& text);

private:
    struct ItemRow {
        GlobalItem Item;
        QCheckBox* Check = nullptr;
        ValueBox* Current = nullptr;
        ValueBox* New = nullptr;
        QLabel* Unit = nullptr;
    };

    QWidget* BuildSelection();
    QWidget* BuildItems();
    QWidget* BuildCommands();
    ValueBox* MakeBox(const QString& name, ValueBox::Source source);
    ValidatedField* MakeField(const QString& name);
    void SetRules(ValidatedField* field, GlobalItem item);

    GlobalEdit& rules_;
    GlobalFrame frame_;
    QRadioButton* byNode_ = nullptr;
    QRadioButton* byGroup_ = nullptr;
    QRadioButton* all_ = nullptr;
    ValidatedField* from_ = nullptr;
    ValidatedField* to_ = nullptr;
    ValidatedField* group_ = nullptr;
    QRadioButton* relative_ = nullptr;
    QLabel* total_ = nullptr;
    std::vector<ItemRow> rows_;
};

} // namespace quench::gui
