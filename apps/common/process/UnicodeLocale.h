#pragma once

namespace Host {

/// Lets paths and arguments be UTF-8 whatever the account's locale is: a service or a bare account
/// often has none, and what is Russian in them would reach programs and files as question marks.
/// Before any thread is started.
void UseUnicodeLocale();

} // namespace Host
