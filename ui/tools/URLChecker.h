#pragma once

#include "core/interchange/URLCheckList.h"

#include <QDialog>
#include <QString>

class ModalUi;
class QComboBox;
class QLineEdit;
class QWebEngineView;
class ShapeCanvas;

// The URL checker: every address of the map in a list, opened in the embedded browser
// on demand (incomplete ones joined to the base URL), and corrected in place.
class URLChecker : public QDialog
{
    Q_OBJECT
public:
    URLChecker(ShapeCanvas& map, ModalUi& ui, QWidget* parent = nullptr);

    // Opens the selected entry, joined to the base URL when it is incomplete.
    void Check();
    // Asks for a new address for the selected entry and writes it to the map.
    void Edit();
    // Writes the help page next to the program and shows it.
    void About();
    // The address last handed to the browser, as text.
    QString LastAddress() const { return m_lastAddress; }

    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ListClicked();
    void Navigate(const QString& Address);

    ShapeCanvas& m_map;
    ModalUi& m_ui;
    URLCheckList m_list;
    QString m_lastAddress;
    QComboBox* m_combo;
    QLineEdit* m_base;
    QWebEngineView* m_browser;
};
