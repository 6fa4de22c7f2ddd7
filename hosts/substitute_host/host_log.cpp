#include "hosts/substitute_host/host_log.h"

#include <algorithm>

#include "hosts/substitute_host/host_state.h"

void logCall(const char* procedure) {
  host().log.emplace_back(procedure);
}

int logExchange() {
  const FilterRecord& record = *host().record;
  host().exchanges.push_back(
      {record.inRect, record.outRect, record.maskRect, record.inputRate, record.maskRate});
  return static_cast<int>(host().exchanges.size());
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
