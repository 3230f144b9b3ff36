<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>Shared_translations</name>
    <message>
        <source>RM_EV_BDU_USIM_REJECTED</source>
        <translation>SIM rejected</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_LIMITED_SERVICE</source>
        <translation>Limited service</translation>
    </message>
</context>
</TS>
