#include "operations/panels/PanelChoices.h"

using namespace Qt::StringLiterals;

const QList<PanelChoices::Choice>& PanelChoices::controlModes()
{
    static const QList<Choice> list = { { 0, u"Geçiş Kontrol"_s }, { 1, u"Personel Devam Kontrol"_s } };
    return list;
}

const QList<PanelChoices::Choice>& PanelChoices::ports()
{
    static const QList<Choice> list
        = { { 0, u"Tek Port (RS485 PORT 1)"_s }, { 1, u"Çift Port (RS485 PORT 1 ve 2)"_s } };
    return list;
}

const QList<PanelChoices::Choice>& PanelChoices::repeatBlockModes()
{
    static const QList<Choice> list = { { 0, u"İptal"_s }, { 1, u"Aynı Kapıda"_s }, { 2, u"Tüm Kapılarda"_s } };
    return list;
}

const QList<PanelChoices::Choice>& PanelChoices::repeatBlockTypes()
{
    static const QList<Choice> list = { { 0, u"Tüm Yönler İçin"_s }, { 1, u"Sadece Çıkıştan Sonra"_s } };
    return list;
}

const QList<PanelChoices::Choice>& PanelChoices::repeatBlockUnits()
{
    static const QList<Choice> list = { { 0, u"Saniye"_s }, { 1, u"Dakika"_s } };
    return list;
}

const QList<PanelChoices::Choice>& PanelChoices::statusUpdates()
{
    static const QList<Choice> list
        = { { 0, u"İptal"_s }, { 1, u"Tümü"_s }, { 2, u"Sadece Durum Bilgisi"_s }, { 3, u"Sadece Geçiş Bilgisi"_s } };
    return list;
}

const QList<PanelChoices::Choice>& PanelChoices::statusUpdateTypes()
{
    static const QList<Choice> list = { { 0, u"Sadece Remote IP'ye"_s }, { 1, u"Tüm Ağa UDP Yayın"_s } };
    return list;
}

const QList<PanelChoices::Choice>& PanelChoices::statusUpdateTimes()
{
    static const QList<Choice> list = { { 0, u"Sadece Durum Değişimi ve Geçişte"_s }, { 1, u"Her Saniye Gönder"_s } };
    return list;
}

const QList<PanelChoices::Choice>& PanelChoices::inputTypes()
{
    static const QList<Choice> list = { { 0, u"Çıkış Butonu"_s }, { 1, u"Araç Dedektörü"_s } };
    return list;
}

const QList<PanelChoices::Choice>& PanelChoices::doorTypes()
{
    static const QList<Choice> list = { { 0, u"Giriş"_s }, { 1, u"Çıkış"_s } };
    return list;
}

const QList<PanelChoices::Choice>& PanelChoices::doorInputs()
{
    static const QList<Choice> list = { { 0, u"Pasif"_s }, { 1, u"Aktif"_s } };
    return list;
}

const QList<PanelChoices::Choice>& PanelChoices::readerModels()
{
    static const QList<Choice> list = { { 0, u"Standart Okuyucu (Wiegand)"_s },
                                        { 1, u"KX-520/515 VM (UHF Okuyucu)"_s },
                                        { 2, u"KX-520/515 VR (UHF Okuyucu)"_s } };
    return list;
}

QList<PanelChoices::Choice> PanelChoices::accessModes(qint32 readerModel)
{
    if (isUhfReader(readerModel))
        return { { 1, u"Sadece Kart"_s }, { 3, u"Kart veya Şifre"_s } };
    return { { 0, u"Kart ve Şifre"_s }, { 1, u"Sadece Kart"_s }, { 2, u"Sadece Şifre"_s } };
}

const QList<PanelChoices::Choice>& PanelChoices::relayChoices()
{
    static const QList<Choice> list = { { RelayChoiceDoorOnly, u"Sadece Kapı Rölesi"_s },
                                        { 2, u"Kapı Rölesi ve Panel Master Röle"_s },
                                        { RelayChoiceMasterOnly, u"Sadece Panel Master Röle"_s } };
    return list;
}

bool PanelChoices::isUhfReader(qint32 readerModel)
{
    return readerModel == 1 || readerModel == 2;
}

bool PanelChoices::contains(const QList<Choice>& choices, qint32 code)
{
    for (const Choice& choice : choices) {
        if (choice.code == code)
            return true;
    }
    return false;
}
