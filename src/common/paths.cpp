// The places of the program's files, from the build's options.
#include "common/paths.h"

namespace {

// Plain pointers, so that nothing is built before main or destroyed while a thread may still ask.
const char* const buildPlaces[] = {LUMENPANEL_RESOURCE_PATH, LUMENPANEL_SCREENSHOT_PATH,
                                   LUMENPANEL_CONTRAST_FILE};
const char* testPlaces[] = {nullptr, nullptr, nullptr};

QString place(int index)
{
    return QString::fromUtf8(testPlaces[index] ? testPlaces[index] : buildPlaces[index]);
}

} // namespace

QString paths::resourcePath()
{
    return place(0);
}

QString paths::screenshotDirectory()
{
    return place(1);
}

QString paths::contrastFile()
{
    return place(2);
}

void paths::overrideForTest(const char* resources, const char* screenshots, const char* contrast)
{
    testPlaces[0] = resources;
    testPlaces[1] = screenshots;
    testPlaces[2] = contrast;
}
