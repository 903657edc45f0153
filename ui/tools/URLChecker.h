#pragma once

#include "core/interchange/URLCheckList.h"

#include <QDialog>
#include <QString>
#include <QTimer>
#include <optional>

class BrokenLinkFilter;
class LinkTableModel;
class ModalUi;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QModelIndex;
class QPushButton;
class QTableView;
class QWebEngineView;
class ShapeCanvas;

// The URL checker: every address of the map in a list and in a table whose status
// column is filled in the background on request, each one opened in the embedded
// browser on demand (resolved against the base URL as a browser would), and corrected
// in place.
class URLChecker : public QDialog
{
    Q_OBJECT
public:
    URLChecker(ShapeCanvas& map, ModalUi& ui, QWidget* parent = nullptr);
    ~URLChecker() override;

    // Opens the selected entry, resolved against the base URL.
    void Check();
    // Asks for a new address for the selected entry, writes it to the map and checks it.
    void Edit();
    // Writes the help page next to the program and shows it.
    void About();
    // Checks every link; the table fills in as the answers come.
    void CheckAll();
    // Stops the checks in flight.
    void StopChecks();
    // The address last handed to the browser, as text.
    QString LastAddress() const { return m_lastAddress; }
    LinkTableModel& Links() { return *m_links; }

    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* CreateTable();
    void ListClicked();
    void Navigate(const QUrl& Address);
    void ApplyBase();
    void ShowSummary();
    void UpdateButtons();
    void TableRowChosen(const QModelIndex& Current);
    void ComboRowChosen(int Row);

    ShapeCanvas& m_map;
    ModalUi& m_ui;
    URLCheckList m_list;
    LinkTableModel* m_links;
    BrokenLinkFilter* m_filter;
    QString m_lastAddress;
    std::optional<QString> m_appliedBase; // the base the table was resolved against
    QTimer m_baseTyping;
    QTimer m_summaryDelay;
    QComboBox* m_combo;
    QLineEdit* m_base;
    QTableView* m_table = nullptr;
    QLabel* m_summary = nullptr;
    QCheckBox* m_brokenOnly = nullptr;
    QPushButton* m_checkAll = nullptr;
    QPushButton* m_stop = nullptr;
    QWebEngineView* m_browser;
};
