#include "apps/common/process/UnicodeLocale.h"

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <langinfo.h>

namespace Host {

void UseUnicodeLocale()
{
    std::setlocale(LC_CTYPE, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        setenv("LC_ALL", "C.UTF-8", 1);
}

} // namespace Host
