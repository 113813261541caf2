#include "operations/panels/PanelModel.h"

#include "operations/panels/PanelChoices.h"
#include "operations/panels/RepeatBlockTime.h"

using namespace Qt::StringLiterals;

const QList<PanelModel>& PanelModel::all()
{
    static const QList<PanelModel> models = {
        { 0, u"KX-410"_s, true, false, false, false },
        { 1, u"KX-410 UHF"_s, true, true, true, true },
        { 2, u"KX-410 T"_s, false, false, false, false },
    };
    return models;
}

const PanelModel& PanelModel::byCode(qint32 code)
{
    for (const PanelModel& model : all()) {
        if (model.code == code)
            return model;
    }
    return all().first();
}

bool PanelModel::allowsReaderModel(qint32 readerModel) const
{
    return PanelChoices::contains(PanelChoices::readerModels(), readerModel)
        && (uhfReaders || !PanelChoices::isUhfReader(readerModel));
}

void PanelModel::applyTo(PanelSettingsRecord& settings) const
{
    settings.model = code;
    if (requiresRepeatBlock && settings.sameTagBlock < 2) {
        settings.sameTagBlock = 2;
        RepeatBlockTime block = RepeatBlockTime::unpack(settings.sameTagBlockMinSec);
        block.time = 1;
        settings.sameTagBlockMinSec = block.packed();
    }
    if (!vehicleDetectors)
        settings.buttonLoop = 0;
    for (PanelSettingsRecord::Door& door : settings.doors) {
        if (!allowsReaderModel(door.readerModel))
            door.readerModel = 0;
        const QList<PanelChoices::Choice> modes = PanelChoices::accessModes(door.readerModel);
        if (!PanelChoices::contains(modes, door.accessMode))
            door.accessMode = modes.first().code;
        if (!doorRelays) {
            door.relayChoice = PanelChoices::RelayChoiceMasterOnly;
            if (door.relayNo < 1 || door.relayNo > 4)
                door.relayNo = 1;
        }
    }
}
