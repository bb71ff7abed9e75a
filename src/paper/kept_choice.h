#pragma once

#include <string>

#include "paper/sheet_choice.h"

// What was chosen for printing, in Local.Ini: section "PrinterSetup" has what all drawings begin with,
// section "PrintedDrawings" a line for each drawing that was printed otherwise.
namespace norvelis::paper {

/// "fit grid 3x2, paper A3, turn landscape, overlap 10, marks yes, footer yes"
std::string ChoiceText(const SheetChoice& choice);
/// What a text says; what it does not say, or says in words that nobody knows, is as in `otherwise`.
SheetChoice ParseChoice(std::string_view text, const SheetChoice& otherwise);

/// What the printer set-up has: paper and how it is turned; the rest is the usual.
SheetChoice SetUpChoice(const std::string& ini);
void KeepSetUpChoice(const std::string& ini, const SheetChoice& choice);

/// What the drawing was printed with last, or what the set-up has.
SheetChoice ChoiceFor(const std::string& ini, const std::string& drawing);
void KeepChoiceFor(const std::string& ini, const std::string& drawing, const SheetChoice& choice);

/// The printer that was chosen last; empty for none.
std::string KeptPrinter(const std::string& ini);
void KeepPrinter(const std::string& ini, const std::string& printer);

}  // namespace norvelis::paper
