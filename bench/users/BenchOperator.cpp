#include "BenchOperator.h"

bool BenchOperator::ask(const Message&)
{
    ++m_questions;
    return true;
}

void BenchOperator::tell(const Message&, Kind) { }

void BenchOperator::progress(int, int) { }

void BenchOperator::status(const Message&) { }

void BenchOperator::requestLogin() { }

bool BenchOperator::cancelRequested() const
{
    return false;
}
