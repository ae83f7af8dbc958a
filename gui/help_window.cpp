#include "gui/help_window.h"

#include "gui/qt_text.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace quench::gui {

namespace {

QLabel* TitleLabel(const std::string& text, QWidget* parent) {
    auto* label = new QLabel(Text(text), parent);
    label->setObjectName("lblHelpTitle");
    QFont font = label->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.2);
    label->setFont(font);
    label->setAlignment(Qt::AlignHCenter);
    label->setWordWrap(true);
    return label;
}

QLabel* DescriptionLabel(const std::string& text, QWidget* parent) {
    auto* label = new QLabel(Text(text), parent);
    label->setObjectName("lblHelpDescription");
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

// --- frmHelp

HelpWindow::HelpWindow(const HelpContent& content, QWidget* parent)
    : QDialog(parent), title_(TitleLabel(content.Title, this)),
      description_(DescriptionLabel(content.Description, this)) {
    setObjectName("frmHelp");
    setWindowTitle(Text(content.Title));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title_);
    layout->addWidget(description_);
    layout->addStretch();
}

void HelpWindow::mousePressEvent(QMouseEvent* /*event*/) {
    close();
}

void HelpWindow::keyPressEvent(QKeyEvent* /*event*/) {
    close();
}

void HelpWindow::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    // Another window taking the focus closes the help it had.
    if (event->type() == QEvent::ActivationChange) {
        if (isActiveWindow()) {
            setProperty("WasActive", true);
        } else if (property("WasActive").toBool()) {
            close();
        }
    }
}

// --- frmHelpWithList

HelpListWindow::HelpListWindow(HelpContent content, QWidget* parent)
    : QDialog(parent), content_(std::move(content)), title_(TitleLabel(content_.Title, this)),
      description_(DescriptionLabel(content_.Description, this)), list_(new QTreeWidget(this)),
      entry_(new QLineEdit(this)), ok_(new QPushButton("&OK", this)),
      cancel_(new QPushButton("&Cancel", this)) {
    setObjectName("frmHelpWithList");
    setWindowTitle(Text(content_.Title));
    list_->setObjectName("lstHelp");
    list_->setRootIsDecorated(false);
    list_->setAllColumnsShowFocus(true);
    list_->setUniformRowHeights(true);
    const PickList& pick = content_.List;
    std::size_t columns = pick.Headings.size();
    for (const auto& row : pick.Rows) {
        columns = std::max(columns, row.size());
    }
    list_->setColumnCount(static_cast<int>(std::max<std::size_t>(columns, 1)));
    QStringList headings;
    for (const std::string& heading : pick.Headings) {
        headings << Text(heading);
    }
    list_->setHeaderLabels(headings);
    list_->header()->setObjectName("Mh3dList1");
    list_->setHeaderHidden(pick.Headings.empty());
    for (const auto& row : pick.Rows) {
        QStringList cells;
        for (const std::string& cell : row) {
            cells << Text(cell);
        }
        list_->addTopLevelItem(new QTreeWidgetItem(cells));
    }
    for (int column = 0; column < list_->columnCount(); ++column) {
        list_->resizeColumnToContents(column);
    }
    if (content_.SelectedRow >= 0) {
        list_->setCurrentItem(list_->topLevelItem(content_.SelectedRow));
    }
    // A list without rows shows its text (and its note) alone.
    list_->setVisible(!pick.Rows.empty());
    auto* note = new QLabel(Text(pick.Note), this);
    note->setWordWrap(true);
    note->setVisible(!pick.Note.empty());

    auto* entryLabel = new QLabel(Text(content_.EntryLabel), this);
    entryLabel->setObjectName("lblDefaultValue");
    entry_->setObjectName("txtDefaultValue");
    if (content_.EntryLimits.MaxLength > 0) {
        entry_->setMaxLength(content_.EntryLimits.MaxLength);
    }
    entryLabel->setBuddy(entry_);
    ok_->setObjectName("cmdOK");
    ok_->setDefault(true);
    cancel_->setObjectName("cmdCancel");

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title_);
    layout->addWidget(description_);
    layout->addWidget(note);
    layout->addWidget(list_, 1);
    auto* entryLine = new QHBoxLayout;
    entryLine->addWidget(entryLabel);
    entryLine->addWidget(entry_, 1);
    layout->addLayout(entryLine);
    for (const HelpCalculatorButton& button : content_.Calculators) {
        auto* push = new QPushButton(Latin1(button.Caption), this);
        push->setObjectName(button.Calculator == HelpCalculator::BranchLine ? "cmdBranchLine"
                                                                            : "cmdCalculator");
        const HelpCalculator calculator = button.Calculator;
        connect(push, &QPushButton::clicked, this,
                [this, calculator] { emit CalculatorWanted(calculator); });
        calculators_.push_back(push);
        layout->addWidget(push);
    }
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok_);
    buttons->addWidget(cancel_);
    layout->addLayout(buttons);

    connect(ok_, &QPushButton::clicked, this, &HelpListWindow::TakeChoice);
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
    connect(list_, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item) {
        list_->setCurrentItem(item);
        entry_->clear();
        TakeChoice();
    });
}

void HelpListWindow::TakeChoice() {
    // A value typed under the list wins over the row that stands selected.
    choice_ = TypedValue(content_, Latin1(entry_->text()));
    if (!choice_) {
        QTreeWidgetItem* item = list_->currentItem();
        if (item != nullptr) {
            choice_ = PickedValue(content_, list_->indexOfTopLevelItem(item));
        }
    }
    if (choice_) {
        accept();
    } else {
        reject();
    }
}

void HelpListWindow::Choose(const std::string& value) {
    choice_ = value;
    accept();
}

// --- The windows of the frame

HelpWindows::HelpWindows(Project& project, const PipeLibrary& library, ScreenDispatcher& screens,
                         QWidget* frame)
    : QObject(frame), project_(project), library_(library), screens_(screens), frame_(frame) {}

void HelpWindows::Place(QWidget& window) const {
    // A sixth in from the frame's left, a third down, half its width.
    const QRect frame = frame_->frameGeometry();
    window.resize(std::max(frame.width() / 2, 320), window.sizeHint().height());
    window.move(frame.left() + frame.width() / 6, frame.top() + frame.height() / 3);
}

QDialog* HelpWindows::Show(const HelpRequest& request, std::vector<std::string> values) {
    if (current_ != nullptr) {
        current_->close();
    }
    state_.CurrentHelpKey = request.Key;
    state_.HelpOriginRow = request.OriginRow;
    state_.HelpFieldText = request.FieldText;
    state_.HelpSelection.clear();
    state_.HelpWindowOpen = true;

    HelpSources sources;
    sources.Library = &library_;
    sources.PumpNames = pumpNames_;
    sources.Values = std::move(values);
    sources.System = project_.UnitSystem == 1 ? MeasureSystem::SI : MeasureSystem::US;
    HelpContent content = LoadHelp(request, project_, sources);

    QDialog* window = nullptr;
    if (content.WithList) {
        auto* list = new HelpListWindow(std::move(content), frame_);
        list->setWindowModality(Qt::ApplicationModal);
        connect(list, &HelpListWindow::CalculatorWanted, this,
                [this, list, request](HelpCalculator calculator) {
                    if (!opener_) {
                        return;
                    }
                    if (const std::optional<std::string> value = opener_(calculator, request)) {
                        list->Choose(*value);
                    }
                });
        connect(list, &QDialog::finished, this,
                [this, list, request] { Closed(request, list->Choice()); });
        window = list;
    } else {
        window = new HelpWindow(content, frame_);
        connect(window, &QDialog::finished, this,
                [this, request] { Closed(request, std::nullopt); });
    }
    window->setAttribute(Qt::WA_DeleteOnClose);
    Place(*window);
    current_ = window;
    window->show();
    window->activateWindow();
    return window;
}

void HelpWindows::Closed(const HelpRequest& request, const std::optional<std::string>& choice) {
    state_.HelpWindowOpen = false;
    if (choice) {
        state_.HelpSelection = *choice;
        const std::string_view word = HelpReturnWord(request.Screen);
        if (!word.empty()) {
            screens_.Send(request.Screen, word);
        }
        return;
    }
    const std::string_view word = HelpCloseWord(request.Key);
    if (!word.empty()) {
        screens_.Send("frmEEPipeData", word);
    }
}

QToolButton* MakeHelpButton(QWidget* parent, const QString& helpKey,
                            std::function<void()> clicked) {
    auto* button = new QToolButton(parent);
    button->setText("?");
    button->setObjectName("cmdHelp" + helpKey);
    button->setProperty("CurrentHelpKey", helpKey);
    button->setFocusPolicy(Qt::NoFocus);
    button->setAutoRaise(true);
    button->setToolTip("Help");
    QObject::connect(button, &QToolButton::clicked, parent, std::move(clicked));
    return button;
}

} // namespace quench::gui
