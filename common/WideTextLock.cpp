#include "common/WideTextLock.h"

namespace {

ca::CForkMutex wideTextMutex;

}  // namespace

ca::CWideTextLock::CWideTextLock() : m_lock(wideTextMutex) {}
