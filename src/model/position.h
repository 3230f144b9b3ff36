// The terminal's position, as read from the radio module. Plain values; any thread.
#ifndef LUMENPANEL_MODEL_POSITION_H
#define LUMENPANEL_MODEL_POSITION_H

struct gps_data_t {
    bool latNorth = true; // false south
    int latDeg = 0;
    int latMin = 0;
    int latMinFraction = 0; // thousandths of a minute, not shown
    bool longEast = true;   // false west
    int longDeg = 0;
    int longMin = 0;
    int longMinFraction = 0;  // thousandths of a minute, not shown
    int numberOfGpsFound = 0; // satellites in use
    int fix_type = 0;         // 0 no fix, 2 and 3 a fix
    bool displayPositionAllowed = true;
};

#endif
