#pragma once

class Operator;
class OperatorSession;

// The guard in front of every operation that changes panels or master data: without
// administrator rights the login is brought up; if rights are still missing afterwards the person
// is told "Yetki hatası, Yönetici şifresi gerekli!" and the operation must not go on.
bool checkAdministratorRights(const OperatorSession& session, Operator& op);
