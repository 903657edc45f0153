#pragma once

#include <QDialog>
#include <QString>

class ModalUi;
class QPlainTextEdit;

// "Map Code": the generated HTML, ready to be copied into a page.
class GeneratedCodeForm : public QDialog
{
    Q_OBJECT
public:
    GeneratedCodeForm(const QString& code, ModalUi& ui, QWidget* parent = nullptr);

    // Selects the whole text and puts all of it, line breaks as generated, on the
    // clipboard.
    void CopyHtml();
    void WhatNow();
    // Three paragraphs separated by an empty line ("\n\n").
    static QString WhatNowText();

private:
    ModalUi& m_ui;
    QString m_code;
    QPlainTextEdit* m_text;
};
