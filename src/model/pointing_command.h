// The one thing that the model needs of the floor above it: the command to the pointing process.
#ifndef LUMENPANEL_MODEL_POINTING_COMMAND_H
#define LUMENPANEL_MODEL_POINTING_COMMAND_H

// Sends "start", "stop" or "cancel" over the bus. Any thread that may write to the bus; blocks until
// the frame is in the socket. Returns 0, or -1 when the terminal isn't up or the frame could not be
// sent; the failure is logged there.
int send_pointing_msg(const char* data);

#endif
