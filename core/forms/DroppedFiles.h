#pragma once

#include <QStringList>

class QMimeData;

// The local files carried by a drag: what the frame opens when they are dropped on it
// (maps by their .imp extension, anything else as a picture for a new map).
class DroppedFiles
{
public:
    static QStringList Paths(const QMimeData* Data);
};
