#pragma once

#include <QString>

class ModalUi;
class ShapeCanvas;

// "Generate" of the import dialog: pasted map HTML replaces the map's shapes and
// default area, or a message says why not and the map stays as it was.
class MapImport
{
public:
    // True when the map now holds the imported shapes.
    static bool Generate(const QString& Text, ShapeCanvas& Map, ModalUi& Ui);
    static QString KeepTextHint()
    {
        return QStringLiteral("\"Keep text as written\" reads this code as a browser does.");
    }
};
