#pragma once

#include <QString>
#include <QStringList>

// What the three file dialogs ask for, and the rule that gives a saved map its
// extension. No widgets here: QtModalUi shows the dialogs.
namespace CommonDialogStuff {

inline const QString PictureTitle = QStringLiteral("Load Picture");
inline const QString OpenMapTitle = QStringLiteral("Open Map");
inline const QString SaveMapTitle = QStringLiteral("Save Map");

// Name filters in QFileDialog form, the patterns in the last parentheses (the
// dialog shows each entry without them); the first entry is selected.
QStringList PictureFilters();
QStringList MapFilters();

// A save name without ".imp" anywhere in it (any case) is cut at its first NUL and
// gets ".imp" appended; any other name is returned unchanged.
QString WithMapExtension(const QString& FileName);

// The save dialog asked about replacing the name as typed; when the extension makes it
// another file that exists, this is the question to ask before replacing that one
// (empty when there is nothing to ask).
QString ReplaceQuestion(const QString& ChosenName);

} // namespace CommonDialogStuff
