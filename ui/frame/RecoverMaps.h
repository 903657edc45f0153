#pragma once

#include <QDialog>

class ModalUi;
class QPushButton;
class QTreeWidget;
class RecoveryOffer;

// "Recover Maps": the maps a run that ended without closing them left behind, each
// with its name, its picture and the time of its last change; Recover and Discard act
// on the selected rows, Later keeps the rest for the next start. Files that could not
// be read are listed with the reason. Accepted once every row is decided.
class RecoverMaps : public QDialog
{
    Q_OBJECT
public:
    RecoverMaps(RecoveryOffer& Offer, ModalUi& Ui, QWidget* parent = nullptr);

    QTreeWidget& List() const { return *m_list; }
    void RecoverSelected();
    void DiscardSelected();

private:
    RecoveryOffer& m_offer;
    ModalUi& m_ui;
    QTreeWidget* m_list;
    QPushButton* m_recover;
    QPushButton* m_discard;

    void Fill();
    // The selected rows, last first, so that taking one leaves the others' numbers.
    QList<int> SelectedRows() const;
    void Decided();
};
