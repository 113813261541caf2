#include "CliCommandList.h"

#include "ApbCommand.h"
#include "BackupCommand.h"
#include "CalendarsCommand.h"
#include "CountersCommand.h"
#include "DoorCommand.h"
#include "GroupsCommand.h"
#include "LiveCommand.h"
#include "LookupCommand.h"
#include "PanelsCommand.h"
#include "PermissionCommand.h"
#include "ProgrammeCommand.h"
#include "RecordsCommand.h"
#include "ReportCommand.h"
#include "ScheduleCommand.h"
#include "SetupCommand.h"
#include "TimeGroupsCommand.h"
#include "UsersCommand.h"
#include "ZonesCommand.h"

std::vector<std::unique_ptr<CliCommand>> CliCommandList()
{
    std::vector<std::unique_ptr<CliCommand>> commands;
    commands.push_back(std::make_unique<SetupCommand>());
    commands.push_back(std::make_unique<PanelsCommand>());
    commands.push_back(std::make_unique<UsersCommand>());
    commands.push_back(std::make_unique<CountersCommand>());
    commands.push_back(std::make_unique<ApbCommand>());
    commands.push_back(std::make_unique<DoorCommand>());
    commands.push_back(std::make_unique<GroupsCommand>());
    commands.push_back(std::make_unique<TimeGroupsCommand>());
    commands.push_back(std::make_unique<CalendarsCommand>());
    commands.push_back(std::make_unique<ProgrammeCommand>());
    commands.push_back(std::make_unique<PermissionCommand>());
    commands.push_back(std::make_unique<ZonesCommand>());
    commands.push_back(std::make_unique<LookupCommand>(LookupTable::Kind::Companies));
    commands.push_back(std::make_unique<LookupCommand>(LookupTable::Kind::Departments));
    commands.push_back(std::make_unique<LookupCommand>(LookupTable::Kind::Blocks));
    commands.push_back(std::make_unique<ReportCommand>());
    commands.push_back(std::make_unique<RecordsCommand>());
    commands.push_back(std::make_unique<LiveCommand>());
    commands.push_back(std::make_unique<BackupCommand>());
    commands.push_back(std::make_unique<ScheduleCommand>());
    return commands;
}
