#include "hosts/substitute_host/host_log.h"

#include <algorithm>

#include "hosts/substitute_host/host_state.h"

void logCall(const char* procedure) {
  if (host().switches.keepsLog) host().log.emplace_back(procedure);
}

bool callFails(const char* procedure) {
  logCall(procedure);
  if (++host().fallibleCalls != host().failsAt) return false;
  host().failedCall = procedure;
  return true;
}

void failHostCall(int32_t n) {
  host().failsAt = n;
  host().fallibleCalls = 0;
  host().failedCall = nullptr;
}

const char* failedHostCall() {
  return host().failedCall;
}

int logExchange() {
  ++host().exchangeCount;
  if (!host().switches.keepsLog) return host().exchangeCount;
  const FilterRecord& record = *host().record;
  host().exchanges.push_back(
      {record.inRect, record.outRect, record.maskRect, record.inputRate, record.maskRate});
  return host().exchangeCount;
}

const std::vector<std::string>& hostLog() {
  return host().log;
}

const std::vector<HostExchange>& hostExchanges() {
  return host().exchanges;
}

int32_t hostCallCount(const std::string& name) {
  return static_cast<int32_t>(std::count(host().log.begin(), host().log.end(), name));
}
