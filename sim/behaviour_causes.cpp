// The causes of the network by name: one table.
#include "sim/behaviour_causes.h"

#include "sim/command_actor.h"

#include <strings.h>

namespace sim {

const std::vector<NamedCause>& namedCauses()
{
    static const std::vector<NamedCause> causes = {
        {1, "EV_AP_GUI_CONN_LIMIT_EXCEEDED"},
        {2, "EV_AP_GUI_CONN_AUTO_ACT_FAILED"},
        {3, "EV_AP_GUI_CONN_FAILED"},
        {4, "EV_AP_GUI_CONN_LOST"},
        {5, "EV_AP_GUI_NETWORK_FAILURE"},
        {6, "EV_AP_GUI_NETWORK_FAILURE_RETRY"},
        {7, "EV_AP_GUI_LAN_DISCONNECTED"},
        {8, "EV_AP_GUI_NOT_ALL_ACTIVATED"},
        {10, "EV_AP_GUI_CONN_CLOSED_REASON_LINK_MON_RECONNECT"},
        {0x10000008, "Operator Determined Barring"},
        {0x1000001a, "Insufficient resources"},
        {0x1000001b, "Missing or unknown APN"},
        {0x1000001c, "Unknown PDP address or PDP type"},
        {0x1000001d, "User authentication failed"},
        {0x1000001e, "Activation rejected by GGSN"},
        {0x1000001f, "Activation rejected, unspecified"},
        {0x10000020, "Service option not supported"},
        {0x10000021, "Requested service option not subscribed"},
        {0x10000022, "Service option temporarily out of order"},
        {0x10000023, "NSAPI already used"},
        {0x10000024, "Normal deactivation"},
        {0x10000025, "QoS not accepted"},
        {0x10000026, "Activation rejected, Network failure"},
        {0x10000027, "Reactivation required"},
        {0x10000028, "Feature not supported"},
        {0x10000029, "Semantic error in the TFT operation"},
        {0x1000002a, "Syntactical error in the TFT operation"},
        {0x1000002b, "Unknown PDP context"},
        {0x1000002c, "Semantic errors in packet filter(s)"},
        {0x1000002d, "Syntactical errors in packet filter(s)"},
        {0x1000002e, "PDP context without TFT already activated"},
        {0x10024002, "Network failure IMSI unknown (HLR)"},
        {0x10024003, "Network failure, Mobile Station illegal"},
        {0x10024006, "Network failure, Mobile Equipment illegal"},
        {0x10024007, "Attach reject, GPRS not allowed"},
        {0x10024008, "Attach reject, services not allowed"},
        {0x10024009, "Network failure, Mobile station id unknown"},
        {0x1002400a, "Network failure, implicitly detached"},
        {0x1002400b, "Network failure, PLMN not allowed"},
        {0x1002400c, "Network failure, Location area not allowed"},
        {0x1002400d, "Network failure, roaming not allowed at location"},
        {0x1002400e, "Network failure, no GPRS service allowed"},
        {0x1002400f, "Network failure, no service at location"},
        {0x10024010, "Network failure, service temporarily unreachable"},
        {0x10024100, "Reject, unspecified"},
        {0x10024101, "Reject, reattach required"},
        {0x10024102, "Connection timeout"},
        {0x10024103, "Reject, authentication failure"},
        {0x10024104, "Reject, network invalid"},
        {0x10024105, "Attach Reject, not allowed"},
        {0x10024106, "Reject, normal detach"},
        {0x10024107, "Attach reject, no IMSI"},
        {0x10024108, "Attach reject, Service request denied"},
        {0x10024109, "Attach reject, searching for PLMN"},
        {0x10034011, "Network failure, PLMN failure"},
        {0x10034014, "Authentication reject, MAC failure"},
        {0x10034015, "Authentication reject, sync failure"},
        {0x10034016, "Network failure, congestion"},
        {0x10034017, "Authentication reject, GSM unacceptable"},
        {0x1003405f, "Network error, detached"},
        {0x10034060, "Network error, invalid mandatory info"},
        {0x10034061, "Network error, message invalid"},
        {0x10034062, "Network error, protocol state error"},
        {0x10034064, "Network error, invalid conditional info"},
        {0x10034065, "Network error, not compatible with protocol state"},
        {0x1003406f, "Network error, unspecified protocol error"},
        {0x10040001, "Reject, detaching"},
        {0x10040002, "Timeout"},
        {0x10040003, "PS attach rejected"},
        {0x10040004, "Activation error, invalid"},
        {0x10040005, "Re-activation timeout"},
        {0x10040008, "Attach reject, timeout"},
        {0x10040101, "Normal deactivation (from Core Network)"},
        {0x10040102, "Normal deactivation (power down or reboot)"},
        {0x10040103, "Normal deactivation (PDP context removed)"},
        {0x10040107, "Normal deactivation (AT command)"},
        {0x1004010b, "Normal deactivation"},
        {0x10051001, "Attach reject, detaching"},
        {0x10051002, "Attach reject, powerdown"},
        {0x10051003, "Attach reject, domain blocked"},
        {0x10051004, "Reject, missing PIN"},
        {0x10051005, "Reject, no selected PLMN"},
        {0x10051006, "Reject, PLMN forbidden"},
        {0x10051007, "Reject, PLMN/GPRS not allowed"},
        {0x10086300, "Establish Reject, normal"},
        {0x10086301, "Establish Reject, Radio Network failure"},
        {0x10086302, "Establish Reject, congestion"},
        {0x10086303, "Establish Reject, unsupported IAI version"},
        {0x10086304, "Establish Reject, unsupported UE class"},
        {0x10086305, "Establish Reject, USIM required"},
        {0x10086306, "Establish Reject, physical channel failure"},
        {0x10086307, "Establish Reject, access Class not allowed"},
        {0x10086308, "Establish Reject, unspecified"},
        {0x10086309, "Conn. release, normal"},
        {0x1008630a, "Conn. release, Radio Network security failure"},
        {0x1008630b, "Conn. release, physical channel failure"},
        {0x1008630c, "Conn. release, PLMN Search"},
        {0x1008630d, "Conn. release, security command failure"},
        {0x10086314, "Deregister, register with no complete"},
        {0x10086315, "Deregister, service area BARRED"},
        {0x10086316, "Deregister, position required"},
        {0x10086317, "Deregister, Core Network reset"},
        {0x10086318, "Deregister, inactivity"},
        {0x10086319, "Deregister, position response not received"},
        {0x1008631a, "Deregister, position age expired"},
        {0x1008631b, "Deregister, decryption error"},
        {0x1008631c, "Deregister, user specified position not permitted"},
        {0x1008631d, "Deregister, Radio Network initiated Deregistration"},
        {0x1008631e, "Deregister, unknown cause"},
        {0x1008631f, "Deregister, tracked SAT below minimum"},
        {0x10086320, "Deregister, Lease Group not available"},
        {0x10086321, "Deregister, Lease Mode handover failed"},
        {0x10086322, "Deregister, Radio Failure"},
        {0x10086323, "Deregister, Unsupported UE subclass"},
        {0x10086324, "Deregister, Elevation too low"},
        {0x10086325, "Deregister, Protocol Failure"},
        {0x10086326, "Deregister, Invalid UE capabilities"},
    };
    return causes;
}

bool parseCause(const std::string& text, int32_t* cause)
{
    int64_t number = 0;
    if (parseNumber(text, 1, INT32_MAX, &number)) {
        *cause = static_cast<int32_t>(number);
        return true;
    }
    for (const NamedCause& row : namedCauses()) {
        if (strcasecmp(row.name, text.c_str()) == 0) {
            *cause = row.cause;
            return true;
        }
    }
    return false;
}

} // namespace sim
