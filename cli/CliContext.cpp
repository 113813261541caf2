#include "CliContext.h"

#include "CliConsole.h"
#include "CliExit.h"
#include "CliStartupUi.h"
#include "store/Clock.h"
#include "store/ConfigFile.h"
#include "store/RightsCheck.h"
#include "store/StartupOptions.h"
#include "store/Translate.h"

using namespace Qt::Literals::StringLiterals;

CliContext::CliContext(const CliGlobalOptions& options)
    : m_options(options)
    , m_clock(Clock::system())
    , m_link(std::make_unique<PanelLink>())
    , m_operator(options)
{ }

CliContext::~CliContext()
{
    // The link and every query go before the database does; the station stops what it started.
    m_link.reset();
    m_station.reset();
}

int CliContext::start()
{
    CliStartupUi ui;
    return start(ui);
}

int CliContext::start(CliStartupUi& ui)
{
    const DataFolder folder(m_options.dataDir);
    const ConfigFile::ReadResult read = ConfigFile::read(folder.configFile());
    // Without set-up choices of its own the command line never invents a station.
    if (!read.settings.isSetUp() && !ui.bringsSettings()) {
        printError(Message(QStringLiteral("Başlangıç ayarları yapılmadı.")));
        CliConsole::errLine(Translate(Message(u"Veri klasörü kurulmamış:"_s)
                                          .value(u' ' + folder.root() + u'\n')
                                          .add(u"Sunucu kurulumu için:"_s))
                            + u"\n  kx410ctl --data-dir "_s + folder.root() + u" setup --server --admin-password N"_s);
        return CliExit::NotStarted;
    }
    return finishStart(ui);
}

int CliContext::finishStart(CliStartupUi& ui)
{
    StartupOptions startup;
    startup.dataDir = m_options.dataDir;
    startup.databaseOverride = m_options.database;
    // The command line runs beside a running station on the same folder.
    startup.singleInstance = false;
    StartupSequence sequence(ui, startup);
    const StartupResult start = sequence.run();
    if (m_options.language >= 0)
        SetCurrentLanguage(m_options.language);
    for (const Message& message : ui.messages())
        printError(message);
    if (!start.ok)
        return CliExit::NotStarted;

    m_station = std::make_unique<Station>(start, m_clock);
    m_station->network().udp = udp();
    m_station->network().link = m_link->settings();
    QString error;
    if (!m_station->load(&error))
        CliConsole::errLine(error);
    m_operator.setLogin(m_station->session(), m_station->accounts(), m_options.userName, m_options.adminPassword);
    return CliExit::Success;
}

UdpSettings CliContext::udp() const
{
    UdpSettings settings;
    if (!m_options.broadcast.isEmpty())
        settings.broadcastAddress = m_options.broadcast;
    return settings;
}

OperationContext CliContext::operationContext()
{
    return m_station->operationContext(db(), link(), m_operator);
}

bool CliContext::requireAdministrator()
{
    return checkAdministratorRights(session(), m_operator);
}

int CliContext::rightsFirst()
{
    return requireAdministrator() ? -1 : CliExit::NeedsAnswer;
}

int CliContext::hintForUnanswered()
{
    const Message question = m_operator.unansweredQuestion();
    if (question.isEmpty())
        return -1;
    printError(Message(u"Bu komut bir soru soruyor: Evet için --yes, Hayır için --no verin."_s));
    return CliExit::NeedsAnswer;
}

int CliContext::exitFor(const WalkResult& result)
{
    if (const int unanswered = hintForUnanswered(); unanswered >= 0)
        return unanswered;
    switch (result.outcome) {
    case WalkResult::Outcome::Completed:
        return result.succeeded() ? CliExit::Success : CliExit::Failed;
    case WalkResult::Outcome::Declined:
        return CliExit::Declined;
    case WalkResult::Outcome::NoRights:
        return CliExit::NeedsAnswer;
    case WalkResult::Outcome::Refused:
    case WalkResult::Outcome::LinkFailed:
    case WalkResult::Outcome::Stopped:
        return CliExit::Failed;
    }
    return CliExit::Failed;
}

int CliContext::exitFor(bool ok)
{
    if (const int unanswered = hintForUnanswered(); unanswered >= 0)
        return unanswered;
    return ok ? CliExit::Success : CliExit::Failed;
}

void CliContext::printError(const Message& message)
{
    CliConsole::errLine(Translate(message));
}

int CliContext::exitForChange(bool ok, const Message& refusal, const QString& databaseError)
{
    if (ok)
        return CliExit::Success;
    printError(refusal);
    if (!databaseError.isEmpty())
        CliConsole::errLine(databaseError);
    return CliExit::Failed;
}
