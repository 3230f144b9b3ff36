// Where the program finds and leaves its files. Three build options of CMake set the places:
// LUMENPANEL_RESOURCE_PATH ("/app/res/disp"), LUMENPANEL_SCREENSHOT_PATH ("/misc") and
// LUMENPANEL_CONTRAST_FILE ("/sys/devices/ocp.2/4830e000.fb/contrast"); the values in brackets are the
// terminal's own. Any thread, no blocking, no failure: nothing here looks whether the files exist.
#ifndef LUMENPANEL_COMMON_PATHS_H
#define LUMENPANEL_COMMON_PATHS_H

#include <QString>

namespace paths {

QString resourcePath();        // directory of icons and translations, no slash at its end
QString screenshotDirectory(); // directory of screenshots, no slash at its end
QString contrastFile();        // file that takes the display's brightness

// For tests only: other places than the build's. A null argument brings the build's own back. The
// texts are not copied and must last; not to be called while another thread may ask.
void overrideForTest(const char* resources, const char* screenshots, const char* contrast);

} // namespace paths

#endif
