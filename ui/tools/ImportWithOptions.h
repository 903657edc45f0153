#pragma once

#include <QString>

class ModalUi;
class ShapeCanvas;

// "Generate" of the import dialog with its options: "Keep text as written" reads the code
// as a browser does (asking which map when it holds several), "Add to the current shapes"
// appends instead of replacing. With neither, the classic conversion runs unchanged.
class ImportWithOptions
{
public:
    // True when the map now holds the imported shapes; otherwise a message said why and
    // the map is as it was.
    static bool Generate(const QString& Text, ShapeCanvas& Map, ModalUi& Ui, bool KeepText,
                         bool Add);
    static QString ChooseMapPrompt()
    {
        return QStringLiteral("The code holds several maps. Which one do you want to convert?");
    }
};
