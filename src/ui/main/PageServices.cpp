#include "ui/main/PageServices.h"

#include "operations/station/Station.h"

PageServices PageServices::of(Station& station, WindowOperator* op)
{
    PageServices services;
    services.station = &station;
    services.db = &station.db();
    services.session = &station.session();
    services.settings = station.settings();
    services.clock = &station.clock();
    services.op = op;
    services.pictureFolder = station.folder().pictureFolder();
    return services;
}
