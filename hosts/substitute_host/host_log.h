// host_log: what the module did with the host, call by call.

#pragma once

// Notes a call of a host service.
void logCall(const char* procedure);

// The same of a service that may fail; whether this call of it has to (failHostCall).
bool callFails(const char* procedure);

// Notes the record's present requests as an exchange, and tells its number, from 1.
int logExchange();
