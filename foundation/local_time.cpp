#include "foundation/local_time.h"

#include "foundation/environment.h"

#include <iomanip>
#include <locale>
#include <sstream>

namespace sigil {

tm localTime(std::time_t seconds)
{
    tzset(); // localtime_r need not notice that the host changed its zone
    return localTimeInKnownZone(seconds);
}

tm localTimeInKnownZone(std::time_t seconds)
{
    tm local{};
    if (!localtime_r(&seconds, &local)) {
        const std::time_t epoch = 0;
        localtime_r(&epoch, &local);
    }
    return local;
}

std::time_t currentTime() { return environment().now().tv_sec; }

std::string formatTime(const tm& time, const char* format)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::put_time(&time, format);
    return text.str();
}

std::string currentTimeText(const char* format) { return formatTime(localTime(currentTime()), format); }

} // namespace sigil
