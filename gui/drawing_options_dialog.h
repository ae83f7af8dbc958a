#pragma once

// The small dialog of a DXF drawing import: the pipe layers, the snap distance, the drawing unit,
// and whether fittings, sizes and number texts are read.

#include "app/interchange_commands.h"
#include "interchange/drawing_import.h"

#include <optional>

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

namespace quench::gui {

class DrawingOptionsDialog final : public QDialog {
public:
    DrawingOptionsDialog(const DrawingImportOptions& current, QWidget* parent = nullptr);

    // The options as typed; nothing while a field holds no usable value (the note says which).
    std::optional<DrawingImportOptions> Chosen() const;

private:
    void Accept();

    DrawingImportOptions base_;
    QLineEdit* layers_;
    QLineEdit* snap_;
    QComboBox* units_;
    QCheckBox* excludeFittings_;
    QCheckBox* excludeDiameters_;
    QCheckBox* numberTexts_;
    QLabel* note_;
};

// Shows the dialog; nothing when cancelled.
std::optional<DrawingImportOptions> AskDrawingOptions(const DrawingImportOptions& current,
                                                      QWidget* parent);

// The chooser that the exchange commands ask, over the dialog.
class DesktopDrawingOptions final : public DrawingOptionsChooser {
public:
    explicit DesktopDrawingOptions(QWidget* parent) : parent_(parent) {}
    std::optional<DrawingImportOptions>
    ChooseDrawingOptions(const DrawingImportOptions& current) override {
        return AskDrawingOptions(current, parent_);
    }

private:
    QWidget* parent_;
};

} // namespace quench::gui
