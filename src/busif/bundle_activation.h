// Starting a bundle: translates its stored definition into the run-time records that the network manager
// acts on, and sets them off.
//
// Bus thread only: everything here reads the database or writes to it, and blocks meanwhile.
#ifndef LUMENPANEL_BUSIF_BUNDLE_ACTIVATION_H
#define LUMENPANEL_BUSIF_BUNDLE_ACTIVATION_H

// Starts the bundle with this number: writes all its records in one message, and 200 ms later the word to
// activate them. Returns 0 when both were sent. Otherwise nothing was: -1 if the old records could not be
// deleted or the bundle has no connection, else the negative sum of the reads that failed. The records of a
// bundle that ran before are deleted in any case. What becomes of the start is told by the database.
int start_bundle(int bundleNumber);

// Deletes the run-time records of connections, qualities of service and filters. Returns 0, or not 0 if a
// request could not be sent.
int cleanup_bundle();

#endif
