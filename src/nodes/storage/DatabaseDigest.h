#pragma once

#include "nodes/values/Result.h"

#include <functional>
#include <string>

namespace Nodes {

class SqliteDatabase;

/// Hash of what a database or file holds, in hexadecimal digits: two that have the same hold the
/// same. One thread.
namespace DatabaseDigest {

/// Called every few thousand rows or megabytes; false ends the work: Cancelled.
using Step = std::function<bool()>;

/// Of all tables, their columns and rows, however they are laid out in the file. Within a
/// transaction it is the state of that.
[[nodiscard]] Result OfContent(SqliteDatabase &database, const Step &step, std::string &digest);
/// Of a file's bytes.
[[nodiscard]] Result OfFile(const std::string &file, const Step &step, std::string &digest);

} // namespace DatabaseDigest

} // namespace Nodes
