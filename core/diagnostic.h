#pragma once

// What went wrong in a step of a run, as the user is to see it. Checks and numeric routines record
// diagnostics and return; one loop per run shows them through the dialogs seam, so the desktop,
// the command line and the tests see one stream of messages in one order.

#include "core/dialogs.h"
#include "core/screens.h"

#include <string>
#include <utility>

namespace quench {

struct Diagnostic {
    Diagnostic(MessageStyle style, std::string title, std::string text)
        : Style(style), Title(std::move(title)), Text(std::move(text)) {}

    // The row or node concerned, and the screen to bring forward: Diagnostic(...).OnRow(3).
    Diagnostic& OnRow(int row) {
        Row = row;
        return *this;
    }
    Diagnostic& OnNode(int node) {
        Node = node;
        return *this;
    }
    Diagnostic& Bring(std::string screen, std::string command) {
        Screen = std::move(screen);
        Command = std::move(command);
        return *this;
    }

    MessageStyle Style = MessageStyle::Plain;
    std::string Title;
    std::string Text;
    int Row = 0;  // the pipe row concerned (1-based), 0 for none
    int Node = 0; // the node concerned, by its typed number, 0 for none
    // The screen brought forward once the message is shown, and the word it is sent; empty for
    // none.
    std::string Screen;
    std::string Command;
};

// The message box, then the screen where the user corrects the fault.
void ShowDiagnostic(const Diagnostic& diagnostic, Dialogs& dialogs, Screens& screens);

} // namespace quench
