#pragma once

#include <QList>
#include <QString>

// The choices of the panel settings whose codes the station decided (docs/protocol.md 3.3.1):
// each list gives the code that is stored and sent with the Turkish caption it is shown with.
// The window, the command line and the checks all read them here.
class PanelChoices
{
public:
    struct Choice
    {
        qint32 code = 0;
        QString caption; // Turkish; shown through the translation table
    };

    static const QList<Choice>& controlModes();
    static const QList<Choice>& ports();
    static const QList<Choice>& repeatBlockModes();
    static const QList<Choice>& repeatBlockTypes();
    static const QList<Choice>& repeatBlockUnits();
    static const QList<Choice>& statusUpdates();
    static const QList<Choice>& statusUpdateTypes();
    static const QList<Choice>& statusUpdateTimes();
    static const QList<Choice>& inputTypes();
    static const QList<Choice>& doorTypes();
    static const QList<Choice>& doorInputs();
    // Every reader model; the panel model decides which of them a door may have.
    static const QList<Choice>& readerModels();
    // The access modes a door's reader offers.
    static QList<Choice> accessModes(qint32 readerModel);
    static const QList<Choice>& relayChoices();

    static bool isUhfReader(qint32 readerModel);
    static bool contains(const QList<Choice>& choices, qint32 code);

    // Door working modes are kept and sent, not shown: the highest code.
    static constexpr qint32 LastWorkingMode = 3;
    static constexpr qint32 RelayChoiceDoorOnly = 1;
    static constexpr qint32 RelayChoiceMasterOnly = 3;
};
