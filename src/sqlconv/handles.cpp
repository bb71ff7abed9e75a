#include "sqlconv/handles.h"

#include <sql.h>
#include <sqlext.h>

#include <cstdint>
#include <string>
#include <utility>

#include "sqlconv/diagnostics.h"

namespace norvelis {

namespace {

constexpr long kNoEnvironment = static_cast<int>(0x80040001);
constexpr long kNoConformance = static_cast<int>(0x80040002);

}  // namespace

EnvironmentHandle::EnvironmentHandle(OdbcVersion version) {
    if (SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &handle_) == SQL_ERROR)
        throw SqlFailure(kNoEnvironment, "Unable to allocate an ODBC Environment Handle");
    const auto number = static_cast<std::uintptr_t>(version);
    if (SQLSetEnvAttr(handle_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(number), 0) == SQL_ERROR) {
        SQLFreeHandle(SQL_HANDLE_ENV, handle_);
        throw SqlFailure(kNoConformance, "Unable to set ODBC" + std::to_string(number) + " conformance");
    }
}

EnvironmentHandle::~EnvironmentHandle() {
    SQLFreeHandle(SQL_HANDLE_ENV, handle_);
}

ConnectionHandle::ConnectionHandle() {
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_DBC, environment_.Get(), &handle_)))
        throw SqlFailure(DiagnosticsOf(SQL_HANDLE_ENV, environment_.Get()));
}

ConnectionHandle::~ConnectionHandle() {
    SQLDisconnect(handle_);
    SQLFreeHandle(SQL_HANDLE_DBC, handle_);
}

void ConnectionHandle::SetRunning(void* statement) {
    const std::lock_guard lock(mutex_);
    running_ = statement;
}

void ConnectionHandle::Forget(void* statement) {
    const std::lock_guard lock(mutex_);
    if (running_ == statement) running_ = nullptr;
}

void ConnectionHandle::Cancel() {
    const std::lock_guard lock(mutex_);
    if (running_ != nullptr) SQLCancel(running_);
}

StatementHandle::StatementHandle(std::shared_ptr<ConnectionHandle> connection)
    : connection_(std::move(connection)) {
    // A connection whose server has gone gives none.
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_STMT, connection_->Get(), &handle_)))
        throw SqlFailure(DiagnosticsOf(SQL_HANDLE_DBC, connection_->Get()));
    connection_->SetRunning(handle_);
}

StatementHandle::~StatementHandle() {
    connection_->Forget(handle_);
    SQLFreeHandle(SQL_HANDLE_STMT, handle_);
}

void StatementHandle::Check(short result) const {
    if (!SQL_SUCCEEDED(result)) throw SqlFailure(DiagnosticsOf(SQL_HANDLE_STMT, handle_));
}

}  // namespace norvelis
