#include "gui/builder_tab_parts.h"

#include "gui/qt_text.h"
#include "gui/validated_field.h"

#include <QGridLayout>
#include <QLabel>

namespace quench::gui {

namespace {

// Room for the longest number a builder field takes ("-3276.5", "9999.99").
constexpr int FieldWidth = 90;

} // namespace

BuilderFields::BuilderFields(QWidget* owner, MeasureSystem system, char decimalCharacter)
    : owner_(owner), system_(system), decimalCharacter_(decimalCharacter) {}

ValidatedField* BuilderFields::Number(const QString& name, NumberFieldKind kind,
                                      std::optional<UnitKind> unit) {
    auto* field = new ValidatedField(owner_);
    field->setObjectName(name);
    field->setFixedWidth(FieldWidth);
    QLabel* word = unit ? new QLabel(owner_) : nullptr;
    entries_.push_back({field, kind, unit, word});
    ApplyRules(entries_.back());
    return field;
}

ValidatedField* BuilderFields::Text(const QString& name, TextFieldKind kind) {
    auto* field = new ValidatedField(owner_);
    field->setObjectName(name);
    field->setFixedWidth(FieldWidth);
    const TextAttribute attribute = TextAttributeOf(kind);
    field->SetTextRules(attribute);
    field->SetStatusText(gui::Text(ShowTextLength(attribute) + "     " + ShowUnits("Text")));
    entries_.push_back({field, std::nullopt, std::nullopt, nullptr});
    return field;
}

QLabel* BuilderFields::UnitLabel(const ValidatedField* field) const {
    for (const Entry& entry : entries_) {
        if (entry.Field == field) {
            return entry.UnitWord;
        }
    }
    return nullptr;
}

void BuilderFields::SwitchUnits(MeasureSystem system) {
    system_ = system;
    for (const Entry& entry : entries_) {
        ApplyRules(entry);
    }
}

void BuilderFields::ApplyRules(const Entry& entry) {
    if (!entry.Kind) {
        return;
    }
    const NumberAttribute shown =
        ConvertAttribute(NumberAttributeOf(*entry.Kind), entry.Unit, system_);
    entry.Field->SetNumberRules(shown, decimalCharacter_);
    entry.Field->SetStatusText(
        gui::Text(ShowRange(shown) + "     " + ShowUnits(UnitWordOnScreen(entry.Unit, system_))));
    if (entry.UnitWord != nullptr) {
        entry.UnitWord->setText(gui::Text(UnitWord(*entry.Unit, system_)));
    }
}

std::string FieldText(const ValidatedField* field) {
    return Latin1(field->text());
}

void ShowFieldText(ValidatedField* field, const std::string& text) {
    field->SetTextQuietly(Latin1(text));
}

QLabel* AddBuilderRow(QGridLayout* grid, int row, const QString& caption, ValidatedField* field,
                      QLabel* unit) {
    auto* label = new QLabel(caption, grid->parentWidget());
    label->setBuddy(field);
    grid->addWidget(label, row, 0);
    grid->addWidget(field, row, 1);
    if (unit != nullptr) {
        grid->addWidget(unit, row, 2);
    }
    return label;
}

} // namespace quench::gui
