#pragma once

#include <QString>
#include <cstdint>

// Small routines shared across the program: paths, colours, rectangles.
namespace Module1 {

// The characters before the first NUL (all of them when there is none).
QString CutAtNul(const QString& text);
// Text after the last '/' or '\' (the whole path when it has neither).
QString FileNameOfPath(const QString& path);
// Text up to and including the last '/' or '\' (empty when it has neither).
QString FolderOfPath(const QString& path);
// File name with leading and trailing blanks removed: a window's caption.
QString FileTitle(const QString& path);
// The program's folder, ending with the platform's separator.
QString ApplicationFolder();
// Where the program writes its own pages: the program's folder when writable,
// otherwise the per-user data folder (created on demand).
QString WritableProgramFolder();

int RedOf(std::int32_t colour);
int GreenOf(std::int32_t colour);
int BlueOf(std::int32_t colour);
// Six upper-case hex digits RRGGBB, no number sign.
QString ColorToHex(std::int32_t colour);

// Both edges count as inside.
bool PointInRect(std::int32_t x, std::int32_t y, std::int32_t left, std::int32_t top,
                 std::int32_t right, std::int32_t bottom);

} // namespace Module1
