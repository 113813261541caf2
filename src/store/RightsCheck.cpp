#include "store/RightsCheck.h"

#include "store/Operator.h"
#include "store/OperatorSession.h"

bool checkAdministratorRights(const OperatorSession& session, Operator& op)
{
    if (session.isAdministrator())
        return true;
    op.requestLogin();
    if (session.isAdministrator())
        return true;
    op.tell(Message(QStringLiteral("Yetki hatası, Yönetici şifresi gerekli!")), Operator::Kind::Warning);
    return false;
}
