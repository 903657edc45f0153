#pragma once

#include "core/interchange/MapFormat.h"

#include <QDialog>
#include <QString>
#include <functional>

class ModalUi;
class QComboBox;
class ShapeCanvas;
class QPlainTextEdit;

// "Map Code": the generated HTML, ready to be copied into a page.
class GeneratedCodeForm : public QDialog
{
    Q_OBJECT
public:
    GeneratedCodeForm(const QString& code, ModalUi& ui, QWidget* parent = nullptr);

    // Offers the other formats, made by Generate on demand; code stays the classic form.
    // Shows the format chosen last time and remembers each choice.
    void SetFormats(std::function<QString(MapFormat)> Generate);
    void ShowFormat(MapFormat Format);
    // The viewing form of Map's code in each modern format.
    static std::function<QString(MapFormat)> FormatsOf(ShapeCanvas& Map);
    QString ShownCode() const { return m_shown; }

    // Selects the whole text and puts all of it, line breaks as generated, on the
    // clipboard.
    void CopyHtml();
    void WhatNow();
    // Three paragraphs separated by an empty line ("\n\n").
    static QString WhatNowText();

private:
    ModalUi& m_ui;
    QString m_code;
    QString m_shown;
    QPlainTextEdit* m_text;
    QComboBox* m_format;
    std::function<QString(MapFormat)> m_generate;
};
