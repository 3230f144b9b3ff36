// Starting a bundle: translates its stored definition into the run-time records that the network manager
// acts on, and sets them off.
#ifndef LUMENPANEL_BUSIF_BUNDLE_ACTIVATION_H
#define LUMENPANEL_BUSIF_BUNDLE_ACTIVATION_H

// Starts the bundle with this number. Bus thread only; reads the database and waits 200 ms. Returns 0 when
// the records and the activation were sent; -1 or another negative number when nothing was, with the records
// of a bundle that ran before deleted nevertheless. What becomes of the start is told by the database.
int start_bundle(int bundleNumber);

#endif
