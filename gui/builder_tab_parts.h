#pragma once

// What the tree and grid builder tabs share: their fields with the limits and unit words of the
// system on screen, the texts going in and out of them, and the grid of captioned rows.

#include "core/units.h"
#include "entry/field_attributes.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <QString>

class QGridLayout;
class QLabel;
class QWidget;

namespace quench::gui {

class ValidatedField;

class BuilderFields {
public:
    BuilderFields(QWidget* owner, MeasureSystem system, char decimalCharacter);

    // A number field with its limits converted to the unit on screen, and a label of the unit
    // (no label for a count).
    ValidatedField* Number(const QString& name, NumberFieldKind kind,
                           std::optional<UnitKind> unit = std::nullopt);
    ValidatedField* Text(const QString& name, TextFieldKind kind);
    // The unit label of a number field; null for a count or a text.
    QLabel* UnitLabel(const ValidatedField* field) const;

    // The limits and the unit words in another system; the texts are the tab's to convert.
    void SwitchUnits(MeasureSystem system);
    MeasureSystem System() const { return system_; }
    char DecimalCharacter() const { return decimalCharacter_; }

private:
    struct Entry {
        ValidatedField* Field;
        std::optional<NumberFieldKind> Kind;
        std::optional<UnitKind> Unit;
        QLabel* UnitWord;
    };
    void ApplyRules(const Entry& entry);

    QWidget* owner_;
    MeasureSystem system_;
    char decimalCharacter_;
    std::vector<Entry> entries_;
};

// A builder's inputs as the fields show them, held in US units. A unit switch shows the held
// values again in the other system; only the fields typed in since are read back from their
// texts, so that switching to and fro never moves a value by the rounding of its text.
template <typename Data>
class HeldInputs {
public:
    Data Values;

    // How the value of a field goes from one record into another.
    template <typename Member>
    void Bind(const ValidatedField* field, Member Data::*member) {
        copies_.emplace_back(field,
                             [member](const Data& from, Data& to) { to.*member = from.*member; });
    }
    // New values shown: nothing is typed yet.
    void Reset(const Data& values) {
        Values = values;
        typed_.clear();
    }
    void Typed(const ValidatedField* field) { typed_.insert(field); }
    // The typed fields' values from a record made from all the texts.
    void TakeTyped(const Data& fromTexts) {
        for (const auto& [field, copy] : copies_) {
            if (typed_.contains(field)) {
                copy(fromTexts, Values);
            }
        }
        typed_.clear();
    }

private:
    std::vector<std::pair<const ValidatedField*, std::function<void(const Data&, Data&)>>> copies_;
    std::set<const ValidatedField*> typed_;
};

// A field's text as the model's texts are (single bytes), and back without an edit reported.
std::string FieldText(const ValidatedField* field);
void ShowFieldText(ValidatedField* field, const std::string& text);

// One row of a grid: the caption's label, the field and its unit label; returns the caption's
// label so that its words can change with the discharge word.
QLabel* AddBuilderRow(QGridLayout* grid, int row, const QString& caption, ValidatedField* field,
                      QLabel* unit);

} // namespace quench::gui
