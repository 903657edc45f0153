#pragma once

#include <QString>

// Escaping for the modern formats, which must survive any character a user types.
class HtmlText
{
public:
    // For a double-quoted attribute value (and element text): & " < > and carriage
    // returns as references, and the characters XML cannot hold (controls but tab and
    // line breaks) as U+FFFD.
    static QString Attribute(const QString& Text);
    // The same appended to Out, without a temporary string.
    static void AppendAttribute(QString& Out, QStringView Text);
    // Out += ' ' Name '="' escaped Value '"'
    static void AppendNamed(QString& Out, QLatin1String Name, QStringView Value);
    static void AppendNumber(QString& Out, long long Value);
    // A single-quoted JavaScript string literal, quotes included, safe for any text.
    static QString JsString(const QString& Text);
    // Reads back a literal written by JsString (or any ' or " JavaScript string) starting
    // at From; the decoded text, and the position after the closing quote in End.
    // Nothing when there is no complete literal there.
    static bool ReadJsString(const QString& Source, qsizetype From, QString& Text, qsizetype& End);
    // A CSS class for the map: letters, digits, '-' and '_' of the name kept, the rest '_'.
    static QString ClassName(const QString& MapName);
    // The map's name as HTML5 takes it in name, id and usemap: never empty, no whitespace
    // (each run of it becomes one '_'), "map" when nothing else is left.
    static QString Html5MapName(const QString& MapName);
};
