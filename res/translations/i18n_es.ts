<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>ScreenAntenna</name>
    <message>
        <source>BGAN signal: </source>
        <translation>Señal BGAN: </translation>
    </message>
    <message>
        <source>Acquiring position: </source>
        <translation>Obteniendo posición: </translation>
    </message>
    <message>
        <source>Position: </source>
        <translation>Posición: </translation>
    </message>
</context>
<context>
    <name>ScreenBattery</name>
    <message>
        <source>No battery connected</source>
        <translation>Batería no conectada</translation>
    </message>
    <message>
        <source>Int</source>
        <translation>Int</translation>
    </message>
    <message>
        <source>Ext</source>
        <translation>Ext</translation>
    </message>
    <message>
        <source>Temp: </source>
        <translation>Temp.: </translation>
    </message>
</context>
<context>
    <name>ScreenEnterPin</name>
    <message>
        <source>Enter PIN: </source>
        <translation>Introduzca PIN: </translation>
    </message>
</context>
<context>
    <name>ScreenMenu</name>
    <message>
        <source>CONFORMITY_TEXT</source>
        <translation>Por la presente, el fabricante declara que este equipo radioeléctrico es conforme con la Directiva 2014/53/UE. El texto completo de la declaración UE de conformidad está disponible en el manual de usuario.</translation>
    </message>
    <message>
        <source>Point now</source>
        <translation>Apuntar ahora</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Pantalla</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>Brillo</translation>
    </message>
    <message>
        <source>Level 1</source>
        <translation>Nivel 1</translation>
    </message>
    <message>
        <source>Level 2</source>
        <translation>Nivel 2</translation>
    </message>
    <message>
        <source>Level 3</source>
        <translation>Nivel 3</translation>
    </message>
    <message>
        <source>Level 4</source>
        <translation>Nivel 4</translation>
    </message>
    <message>
        <source>Level 5</source>
        <translation>Nivel 5</translation>
    </message>
    <message>
        <source>Level 6</source>
        <translation>Nivel 6</translation>
    </message>
    <message>
        <source>Level 7</source>
        <translation>Nivel 7</translation>
    </message>
    <message>
        <source>5 seconds</source>
        <translation>5 segundos</translation>
    </message>
    <message>
        <source>30 seconds</source>
        <translation>30 segundos</translation>
    </message>
    <message>
        <source>1 minute</source>
        <translation>1 minuto</translation>
    </message>
    <message>
        <source>2 minutes</source>
        <translation>2 minutos</translation>
    </message>
    <message>
        <source>5 minutes</source>
        <translation>5 minutos</translation>
    </message>
    <message>
        <source>Audio indication</source>
        <translation>Aviso sonoro</translation>
    </message>
    <message>
        <source>Pointing</source>
        <translation>Apuntamiento</translation>
    </message>
    <message>
        <source>On</source>
        <translation>Activado</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Desactivado</translation>
    </message>
    <message>
        <source>Power-up mode</source>
        <translation>Modo de encendido</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automático</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>Manual</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Idioma</translation>
    </message>
    <message>
        <source>Properties</source>
        <translation>Propiedades</translation>
    </message>
    <message>
        <source>IP address</source>
        <translation>Dirección IP</translation>
    </message>
    <message>
        <source>Hardware</source>
        <translation>Hardware</translation>
    </message>
    <message>
        <source>Unit serial number</source>
        <translation>Número de serie de la unidad</translation>
    </message>
    <message>
        <source>Antenna serial number</source>
        <translation>Número de serie de la antena</translation>
    </message>
    <message>
        <source>LAN</source>
        <translation>LAN</translation>
    </message>
    <message>
        <source>WLAN</source>
        <translation>Wi-Fi</translation>
    </message>
    <message>
        <source>Software</source>
        <translation>Software</translation>
    </message>
    <message>
        <source>Conformity</source>
        <translation>Conformidad</translation>
    </message>
    <message>
        <source>IMEI</source>
        <translation>IMEI</translation>
    </message>
    <message>
        <source>Help desk</source>
        <translation>Asistencia</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>Alertas</translation>
    </message>
</context>
<context>
    <name>ScreenStatus</name>
    <message>
        <source>G</source>
        <translation>G</translation>
    </message>
    <message>
        <source>R</source>
        <translation>R</translation>
    </message>
    <message>
        <source>N</source>
        <translation>N</translation>
    </message>
</context>
<context>
    <name>Shared_translations</name>
    <message>
        <source>RM_EV_ALARM_LIMITED_SERVICE</source>
        <translation>Servicio limitado</translation>
    </message>
    <message>
        <source>RM_EV_BDU_USIM_REJECTED</source>
        <translation>SIM rechazada</translation>
    </message>
    <message>
        <source>Timeout</source>
        <translation>Tiempo de espera</translation>
    </message>
    <message>
        <source> kB</source>
        <translation> kB</translation>
    </message>
    <message>
        <source>MAC: </source>
        <translation>MAC: </translation>
    </message>
    <message>
        <source>Initializing</source>
        <translation>Inicializando</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>Conectando...</translation>
    </message>
    <message>
        <source> kbps</source>
        <translation> kbps</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Salir</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Iniciar</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
</context>
<context>
    <name>StatusUpdater</name>
    <message>
        <source>RM_EV_INFOLVL_INFO</source>
        <translation>Información</translation>
    </message>
    <message>
        <source>EV_ALARM_SIM_MODULE</source>
        <translation>Avería del lector SIM
Contacte con asistencia</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMP_SENSOR</source>
        <translation>Avería del sensor de temperatura
Contacte con asistencia</translation>
    </message>
    <message>
        <source>EV_ALARM_GPS_MODULE</source>
        <translation>Avería del receptor GPS
Contacte con asistencia</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_NOT_PRESENT</source>
        <translation>Antena no conectada
Compruebe el cable de antena</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_LOW_CRITICAL</source>
        <translation>Temperatura críticamente baja
Deje calentar el terminal</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_TOO_LOW</source>
        <translation>Temperatura demasiado baja
Deje calentar el terminal</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_HIGH_CRITICAL</source>
        <translation>Temperatura críticamente alta
Deje enfriar el terminal</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_TOO_HIGH</source>
        <translation>Temperatura demasiado alta
Deje enfriar el terminal</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_SATELLITE_SIGNAL_LOST</source>
        <translation>Señal de satélite perdida
Despeje visión o apunte de nuevo</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_CS_REGISTER_FAILED</source>
        <translation>Error de registro de voz (CS)
Compruebe la suscripción</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_PS_REGISTER_FAILED</source>
        <translation>Error de registro de datos (PS)
Compruebe la suscripción</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_FAILURE</source>
        <translation>Avería de la antena
Contacte con asistencia</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_ERRORLOG_FLASH_FULL</source>
        <translation>Memoria de errores llena
Contacte con asistencia</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_INVALID_NETWORK</source>
        <translation>Red no válida
Compruebe la SIM y la suscripción</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_CABLE_CALIBRATION</source>
        <translation>Error de calibración del cable
Compruebe el cable de antena</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_DSP_ERROR</source>
        <translation>Procesador de señal (DSP): error
Reinicie el terminal</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_SW_UPDATE_FAILURE</source>
        <translation>Actualización de antena fallida
Reinicie el terminal</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_SW_UPDATE_PROBLEM</source>
        <translation>Problema al actualizar la antena
Reinicie el terminal</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_IMAGE_LOAD_FAILURE</source>
        <translation>Software de antena no cargado
Reinicie el terminal</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_ENTER_MAIN_FAIL</source>
        <translation>La antena no arranca
Reinicie el terminal</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_HPA_COMM_FAIL</source>
        <translation>Sin contacto con el HPA de antena
Compruebe el cable de antena</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_REGISTER_REJ</source>
        <translation>Registro rechazado por la red
Compruebe la suscripción</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_DEREGISTER_COM</source>
        <translation>Baja de registro por la red</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_DEREGISTER</source>
        <translation>Baja de registro en la red</translation>
    </message>
    <message>
        <source>RM_EV_BDU_FLASH_WRITE_LIMIT</source>
        <translation>Memoria flash: límite de escritura
Contacte con asistencia</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_STARTUP_TEMP_TOO_LOW</source>
        <translation>Arranque: antena demasiado fría
Deje calentar la antena</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_STARTUP_TIMEOUT</source>
        <translation>La antena no arrancó a tiempo
Compruebe cable, reinicie terminal</translation>
    </message>
    <message>
        <source>RM_EV_BDU_TEMP_POE_SHUTDOWN</source>
        <translation>Temp. alta: PoE apagado
Deje enfriar el terminal</translation>
    </message>
    <message>
        <source>RM_EV_BDU_TEMP_REDUCE_DATA</source>
        <translation>Temp. alta: menor tasa de datos
Deje enfriar el terminal</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_ILLEGAL_COMBINATION</source>
        <translation>Antena no apta para este terminal
Use una antena compatible</translation>
    </message>
    <message>
        <source>RM_EV_BDU_SATELLITE_NOT_VISIBLE</source>
        <translation>Satélite no visible
Busque un lugar con visión directa</translation>
    </message>
    <message>
        <source>RM_EV_BDU_USIM_MISSING</source>
        <translation>Falta la tarjeta SIM
Inserte la tarjeta SIM</translation>
    </message>
    <message>
        <source>RM_EV_BDU_NAT_TABLE_FULL</source>
        <translation>Tabla NAT llena
Reduzca el número de conexiones</translation>
    </message>
    <message>
        <source>EV_BDU_BP_ANTENNA_HOTSWAP_FAILURE</source>
        <translation>Antena cambiada sin apagar
Reinicie el terminal</translation>
    </message>
    <message>
        <source>EV_BDU_BP_HPA_DC_RESISTOR_LOSS</source>
        <translation>Resistencia excesiva del cable
Compruebe el cable de antena</translation>
    </message>
    <message>
        <source>EV_BDU_BP_ALIVE_ABSENT</source>
        <translation>La antena no responde
Compruebe cable, reinicie terminal</translation>
    </message>
    <message>
        <source>EV_BDU_BP_CAPABILITY_CHECK_FAILURE</source>
        <translation>Capacidades de antena: error
Use una antena compatible</translation>
    </message>
    <message>
        <source>EV_BDU_BP_STARTUP_DONE_FAILURE</source>
        <translation>Arranque de antena no completado
Reinicie el terminal</translation>
    </message>
    <message>
        <source>EV_HPA_CM_VOLTAGE</source>
        <translation>Tensión del HPA fuera de rango
Compruebe el cable de antena</translation>
    </message>
    <message>
        <source>EV_HPA_CM_TEMP_RANGE</source>
        <translation>Temp. del HPA fuera de rango
Proteja la antena del calor y el frío</translation>
    </message>
    <message>
        <source>EV_HPA_CM_TXRX_GAIN_RANGE</source>
        <translation>Ganancia TX/RX del HPA anómala
Contacte con asistencia</translation>
    </message>
    <message>
        <source>EV_HPA_CM_UNEXPECTED_VOLTAGE</source>
        <translation>Tensión del HPA inesperada
Compruebe el cable de antena</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NO_BUNDLES_DEFINED</source>
        <translation>Sin conexiones de datos definidas
Añádalas en la interfaz web</translation>
    </message>
    <message>
        <source>EV_AP_GUI_VALIDATING_PIN</source>
        <translation>Comprobando PIN
Espere</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CIPHERING_OFF</source>
        <translation>Cifrado desactivado
Llamadas y datos sin protección</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SEARCHING_FOR_MODEM</source>
        <translation>Buscando módem externo
Compruebe que esté conectado</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_LIMIT_EXCEEDED</source>
        <translation>Demasiadas conexiones de datos
Detenga una y reintente</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_AUTO_ACT_FAILED</source>
        <translation>Conexión automática fallida
Inicie la conexión manualmente</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_FAILED</source>
        <translation>Conexión fallida
Reintente</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_LOST</source>
        <translation>Conexión perdida
Iníciela de nuevo</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NETWORK_FAILURE</source>
        <translation>Fallo de red
Reintente más tarde</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NETWORK_FAILURE_RETRY</source>
        <translation>Fallo de red
Reintentando automáticamente</translation>
    </message>
    <message>
        <source>EV_AP_GUI_LAN_DISCONNECTED</source>
        <translation>LAN desconectada
Compruebe el cable LAN</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NOT_ALL_ACTIVATED</source>
        <translation>No se iniciaron todas las conexiones
Deténgalas y vuelva a iniciarlas</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_UNKNOWN</source>
        <translation>Conexión fallida: causa desconocida
Reintente</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SW_UPDATE_ANTENNA</source>
        <translation>Actualizando software de antena
No apague el terminal</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_CLOSED_REASON_LINK_MON_RECONNECT</source>
        <translation>Cerrada por supervisión de enlace
Reconectando automáticamente</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SELECT_NETWORK_ON_WEB</source>
        <translation>Ninguna red seleccionada
Selecciónela en la interfaz web</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STARTING_BUNDLE_NAME</source>
        <translation>Iniciando:
</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NOT_REGISTERED_TO_NETWORK</source>
        <translation>No registrado en la red
Espere hasta que el estado sea Listo</translation>
    </message>
    <message>
        <source>EV_AP_GUI_WRONG_PIN</source>
        <translation>PIN incorrecto
Reintente</translation>
    </message>
    <message>
        <source>No alerts</source>
        <translation>Sin alertas</translation>
    </message>
    <message>
        <source>EV_AP_GUI_DHCP_CLIENT_WITHOUT_BONDING</source>
        <translation>Cliente DHCP sin agregación
Cámbielo en la interfaz web</translation>
    </message>
    <message>
        <source>EV_AP_GUI_INTERNAL_ERROR_REQ_REBOOT</source>
        <translation>Error interno
Reinicie el terminal</translation>
    </message>
    <message>
        <source>EV_AP_GUI_MODEM_IN_USE</source>
        <translation>Módem externo en uso</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_INITIALIZING</source>
        <translation>Inicializando
Espere</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_REBOOTING</source>
        <translation>Reiniciando
Espere</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_SHUTTING_DOWN</source>
        <translation>Apagando
Espere</translation>
    </message>
    <message>
        <source>EV_NETMGR_SIMCARD_ERR</source>
        <translation>Módem: error de tarjeta SIM
Compruebe la SIM del módem</translation>
    </message>
    <message>
        <source>EV_NETMGR_MODEM_ERR</source>
        <translation>Error del módem
Vuelva a conectar el módem</translation>
    </message>
    <message>
        <source>EV_NETMGR_MODEM_UNSUPPORTED</source>
        <translation>Módem no compatible
Use otro módem</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_REDUCED_PERF</source>
        <translation>Temp. alta: rendimiento reducido
Deje enfriar el terminal</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_USB</source>
        <translation>Temp. alta: USB apagado
Deje enfriar el terminal</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_USB_EXT</source>
        <translation>Temp. alta: USB externo apagado
Deje enfriar el terminal</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_LIMIT_BACKGR</source>
        <translation>Temp. alta: datos más lentos
Deje enfriar el terminal</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_CLOSE_CONN</source>
        <translation>Temp. alta: datos detenidos
Deje enfriar el terminal</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_CLOSE_TERM</source>
        <translation>Temp. alta: apagando el terminal
Deje enfriar el terminal</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_LOW</source>
        <translation>Temperatura baja
Deje calentar el terminal</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_POE</source>
        <translation>Temp. alta: PoE desactivado
Deje enfriar el terminal</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ON</source>
        <translation>Actualizando software
No apague el terminal</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ON_BATTERY_LOW</source>
        <translation>Actualizando software, batería baja
Conecte la alimentación</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_PREPARING_START</source>
        <translation>Preparando actualización
No apague el terminal</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SWPK_FILE_OPEN_ERROR</source>
        <translation>Actualización fallida: archivo ilegible
Cargue de nuevo el archivo</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_BATTERY_LOW</source>
        <translation>Actualiz. rechazada: batería baja
Conecte la alimentación y reintente</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_DOWNGRADE_PREVENTED</source>
        <translation>Versión antigua rechazada
Use una versión más reciente</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_SWPK_INVALID</source>
        <translation>Archivo de actualización no válido
Use el archivo de este terminal</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_SWPK_CORRUPT</source>
        <translation>Archivo de actualización dañado
Cargue de nuevo el archivo</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_START_FAILED</source>
        <translation>Actualización no iniciada
Reintente</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ROLLED_BACK</source>
        <translation>Actualización fallida
Versión anterior restaurada</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SW_INTEGRITY_ERROR</source>
        <translation>Software dañado
Actualícelo en la interfaz web</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SW_INTEGRITY_ERROR_ANT</source>
        <translation>Software de antena dañado
Actualícelo en la interfaz web</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_PREVIOUS_UPDATE_UNFINISHED</source>
        <translation>Actualización anterior no terminada
Reinicie el terminal y reintente</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_RELEASE_ALREADY_ACTIVE</source>
        <translation>Actualización rechazada
Esta versión ya está en uso</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_GENERAL_ERROR</source>
        <translation>Actualización en línea fallida
Reintente más tarde</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_PDP_CONTEXT_FAILED</source>
        <translation>Actualiz. en línea: sin conexión
Reintente más tarde</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_URL_CONNECT_FAILED</source>
        <translation>Servidor de actualiz. inaccesible
Reintente más tarde</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_TRANSFER_ERROR</source>
        <translation>Transferencia de archivo fallida
Reintente la actualización</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_TRANSFER_TIMEOUT</source>
        <translation>Tiempo de transferencia agotado
Reintente la actualización</translation>
    </message>
    <message>
        <source>EV_PSU_CALIBRATION_ERROR</source>
        <translation>Error de calibración de alimentación
Contacte con asistencia</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_LOW</source>
        <translation>Batería baja
Conecte la alimentación</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_TEMP_LOW</source>
        <translation>Batería demasiado fría
Deje calentar la batería</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_TEMP_HIGH</source>
        <translation>Batería demasiado caliente
Deje enfriar la batería</translation>
    </message>
    <message>
        <source>Operator Determined Barring</source>
        <translation>Restricción determinada por el operador</translation>
    </message>
    <message>
        <source>LLC or SNDCP failure</source>
        <translation>Fallo de LLC o SNDCP</translation>
    </message>
    <message>
        <source>Insufficient resources</source>
        <translation>Recursos insuficientes</translation>
    </message>
    <message>
        <source>Missing or unknown APN</source>
        <translation>APN ausente o desconocido</translation>
    </message>
    <message>
        <source>Unknown PDP address or PDP type</source>
        <translation>Dirección PDP o tipo PDP desconocidos</translation>
    </message>
    <message>
        <source>User authentication failed</source>
        <translation>Autenticación de usuario fallida</translation>
    </message>
    <message>
        <source>Activation rejected by GGSN</source>
        <translation>Activación rechazada por GGSN</translation>
    </message>
    <message>
        <source>Activation rejected, unspecified</source>
        <translation>Activación rechazada, sin especificar</translation>
    </message>
    <message>
        <source>Service option not supported</source>
        <translation>Opción de servicio no compatible</translation>
    </message>
    <message>
        <source>Requested service option not subscribed</source>
        <translation>Opción de servicio solicitada no contratada</translation>
    </message>
    <message>
        <source>Service option temporarily out of order</source>
        <translation>Opción de servicio temporalmente fuera de servicio</translation>
    </message>
    <message>
        <source>NSAPI already used</source>
        <translation>NSAPI ya en uso</translation>
    </message>
    <message>
        <source>Normal deactivation</source>
        <translation>Desactivación normal</translation>
    </message>
    <message>
        <source>QoS not accepted</source>
        <translation>QoS no aceptada</translation>
    </message>
    <message>
        <source>Activation rejected, Network failure</source>
        <translation>Activación rechazada, fallo de red</translation>
    </message>
    <message>
        <source>Reactivation required</source>
        <translation>Reactivación necesaria</translation>
    </message>
    <message>
        <source>Feature not supported</source>
        <translation>Función no compatible</translation>
    </message>
    <message>
        <source>Semantic error in the TFT operation</source>
        <translation>Error semántico en la operación TFT</translation>
    </message>
    <message>
        <source>Syntactical error in the TFT operation</source>
        <translation>Error sintáctico en la operación TFT</translation>
    </message>
    <message>
        <source>Unknown PDP context</source>
        <translation>Contexto PDP desconocido</translation>
    </message>
    <message>
        <source>Semantic errors in packet filter(s)</source>
        <translation>Errores semánticos en filtro(s) de paquetes</translation>
    </message>
    <message>
        <source>Syntactical errors in packet filter(s)</source>
        <translation>Errores sintácticos en filtro(s) de paquetes</translation>
    </message>
    <message>
        <source>PDP context without TFT already activated</source>
        <translation>Contexto PDP sin TFT ya activado</translation>
    </message>
    <message>
        <source>Reject, detaching</source>
        <translation>Rechazo, desconexión de red en curso</translation>
    </message>
    <message>
        <source>PS attach rejected</source>
        <translation>Conexión a red PS rechazada</translation>
    </message>
    <message>
        <source>Activation error, invalid</source>
        <translation>Error de activación, no válida</translation>
    </message>
    <message>
        <source>Re-activation timeout</source>
        <translation>Tiempo de espera de reactivación agotado</translation>
    </message>
    <message>
        <source>Attach reject, timeout</source>
        <translation>Rechazo de conexión a red, tiempo de espera agotado</translation>
    </message>
    <message>
        <source>Normal deactivation (from Core Network)</source>
        <translation>Desactivación normal (desde la red central)</translation>
    </message>
    <message>
        <source>Normal deactivation (power down or reboot)</source>
        <translation>Desactivación normal (apagado o reinicio)</translation>
    </message>
    <message>
        <source>Normal deactivation (PDP context removed)</source>
        <translation>Desactivación normal (contexto PDP eliminado)</translation>
    </message>
    <message>
        <source>Normal deactivation (AT command)</source>
        <translation>Desactivación normal (comando AT)</translation>
    </message>
    <message>
        <source>Reject, unspecified</source>
        <translation>Rechazo, sin especificar</translation>
    </message>
    <message>
        <source>Reject, reattach required</source>
        <translation>Rechazo, nueva conexión a red necesaria</translation>
    </message>
    <message>
        <source>Connection timeout</source>
        <translation>Tiempo de espera de conexión agotado</translation>
    </message>
    <message>
        <source>Reject, authentication failure</source>
        <translation>Rechazo, fallo de autenticación</translation>
    </message>
    <message>
        <source>Reject, network invalid</source>
        <translation>Rechazo, red no válida</translation>
    </message>
    <message>
        <source>Attach Reject, not allowed</source>
        <translation>Rechazo de conexión a red, no permitida</translation>
    </message>
    <message>
        <source>Reject, normal detach</source>
        <translation>Rechazo, desconexión de red normal</translation>
    </message>
    <message>
        <source>Attach reject, no IMSI</source>
        <translation>Rechazo de conexión a red, sin IMSI</translation>
    </message>
    <message>
        <source>Attach reject, Service request denied</source>
        <translation>Rechazo de conexión a red, solicitud de servicio denegada</translation>
    </message>
    <message>
        <source>Attach reject, searching for PLMN</source>
        <translation>Rechazo de conexión a red, buscando PLMN</translation>
    </message>
    <message>
        <source>Establish Reject, normal</source>
        <translation>Rechazo de establecimiento, normal</translation>
    </message>
    <message>
        <source>Establish Reject, Radio Network failure</source>
        <translation>Rechazo de establecimiento, fallo de red de radio</translation>
    </message>
    <message>
        <source>Establish Reject, congestion</source>
        <translation>Rechazo de establecimiento, congestión</translation>
    </message>
    <message>
        <source>Establish Reject, unsupported IAI version</source>
        <translation>Rechazo de establecimiento, versión de IAI no compatible</translation>
    </message>
    <message>
        <source>Establish Reject, unsupported UE class</source>
        <translation>Rechazo de establecimiento, clase de UE no compatible</translation>
    </message>
    <message>
        <source>Establish Reject, USIM required</source>
        <translation>Rechazo de establecimiento, USIM necesaria</translation>
    </message>
    <message>
        <source>Establish Reject, physical channel failure</source>
        <translation>Rechazo de establecimiento, fallo de canal físico</translation>
    </message>
    <message>
        <source>Establish Reject, access Class not allowed</source>
        <translation>Rechazo de establecimiento, clase de acceso no permitida</translation>
    </message>
    <message>
        <source>Establish Reject, unspecified</source>
        <translation>Rechazo de establecimiento, sin especificar</translation>
    </message>
    <message>
        <source>Conn. release, normal</source>
        <translation>Liberación de conexión, normal</translation>
    </message>
    <message>
        <source>Conn. release, Radio Network security failure</source>
        <translation>Liberación de conexión, fallo de seguridad de red de radio</translation>
    </message>
    <message>
        <source>Conn. release, physical channel failure</source>
        <translation>Liberación de conexión, fallo de canal físico</translation>
    </message>
    <message>
        <source>Conn. release, PLMN Search</source>
        <translation>Liberación de conexión, búsqueda de PLMN</translation>
    </message>
    <message>
        <source>Conn. release, security command failure</source>
        <translation>Liberación de conexión, fallo del comando de seguridad</translation>
    </message>
    <message>
        <source>Deregister, unknown cause</source>
        <translation>Baja de registro, causa desconocida</translation>
    </message>
    <message>
        <source>Deregister, register with no complete</source>
        <translation>Baja de registro, registro sin completar</translation>
    </message>
    <message>
        <source>Deregister, service area BARRED</source>
        <translation>Baja de registro, zona de servicio RESTRINGIDA</translation>
    </message>
    <message>
        <source>Deregister, position required</source>
        <translation>Baja de registro, posición necesaria</translation>
    </message>
    <message>
        <source>Deregister, Core Network reset</source>
        <translation>Baja de registro, reinicio de la red central</translation>
    </message>
    <message>
        <source>Deregister, inactivity</source>
        <translation>Baja de registro, inactividad</translation>
    </message>
    <message>
        <source>Deregister, position response not received</source>
        <translation>Baja de registro, respuesta de posición no recibida</translation>
    </message>
    <message>
        <source>Deregister, position age expired</source>
        <translation>Baja de registro, posición caducada</translation>
    </message>
    <message>
        <source>Deregister, decryption error</source>
        <translation>Baja de registro, error de descifrado</translation>
    </message>
    <message>
        <source>Deregister, user specified position not permitted</source>
        <translation>Baja de registro, posición indicada por el usuario no permitida</translation>
    </message>
    <message>
        <source>Deregister, Radio Network initiated Deregistration</source>
        <translation>Baja de registro, iniciada por la red de radio</translation>
    </message>
    <message>
        <source>Deregister, tracked SAT below minimum</source>
        <translation>Baja de registro, satélites seguidos por debajo del mínimo</translation>
    </message>
    <message>
        <source>Deregister, Lease Group not available</source>
        <translation>Baja de registro, grupo arrendado no disponible</translation>
    </message>
    <message>
        <source>Deregister, Lease Mode handover failed</source>
        <translation>Baja de registro, traspaso de modo arrendado fallido</translation>
    </message>
    <message>
        <source>Deregister, Radio Failure</source>
        <translation>Baja de registro, fallo de radio</translation>
    </message>
    <message>
        <source>Deregister, Unsupported UE subclass</source>
        <translation>Baja de registro, subclase de UE no compatible</translation>
    </message>
    <message>
        <source>Deregister, Elevation too low</source>
        <translation>Baja de registro, elevación demasiado baja</translation>
    </message>
    <message>
        <source>Deregister, Protocol Failure</source>
        <translation>Baja de registro, fallo de protocolo</translation>
    </message>
    <message>
        <source>Deregister, Invalid UE capabilities</source>
        <translation>Baja de registro, capacidades de UE no válidas</translation>
    </message>
    <message>
        <source>Network failure IMSI unknown (HLR)</source>
        <translation>Fallo de red, IMSI desconocido (HLR)</translation>
    </message>
    <message>
        <source>Network failure, Mobile Station illegal</source>
        <translation>Fallo de red, estación móvil ilegal</translation>
    </message>
    <message>
        <source>Network failure, Mobile Equipment illegal</source>
        <translation>Fallo de red, equipo móvil ilegal</translation>
    </message>
    <message>
        <source>Attach reject, GPRS not allowed</source>
        <translation>Rechazo de conexión a red, GPRS no permitido</translation>
    </message>
    <message>
        <source>Attach reject, services not allowed</source>
        <translation>Rechazo de conexión a red, servicios no permitidos</translation>
    </message>
    <message>
        <source>Network failure, Mobile station id unknown</source>
        <translation>Fallo de red, identidad de estación móvil desconocida</translation>
    </message>
    <message>
        <source>Network failure, implicitly detached</source>
        <translation>Fallo de red, desconexión de red implícita</translation>
    </message>
    <message>
        <source>Network failure, PLMN not allowed</source>
        <translation>Fallo de red, PLMN no permitida</translation>
    </message>
    <message>
        <source>Network failure, Location area not allowed</source>
        <translation>Fallo de red, área de localización no permitida</translation>
    </message>
    <message>
        <source>Network failure, roaming not allowed at location</source>
        <translation>Fallo de red, itinerancia no permitida en este lugar</translation>
    </message>
    <message>
        <source>Network failure, no GPRS service allowed</source>
        <translation>Fallo de red, servicio GPRS no permitido</translation>
    </message>
    <message>
        <source>Network failure, no service at location</source>
        <translation>Fallo de red, sin servicio en este lugar</translation>
    </message>
    <message>
        <source>Network failure, service temporarily unreachable</source>
        <translation>Fallo de red, servicio temporalmente inaccesible</translation>
    </message>
    <message>
        <source>Network failure, PLMN failure</source>
        <translation>Fallo de red, fallo de PLMN</translation>
    </message>
    <message>
        <source>Authentication reject, MAC failure</source>
        <translation>Rechazo de autenticación, fallo de MAC</translation>
    </message>
    <message>
        <source>Authentication reject, sync failure</source>
        <translation>Rechazo de autenticación, fallo de sincronización</translation>
    </message>
    <message>
        <source>Network failure, congestion</source>
        <translation>Fallo de red, congestión</translation>
    </message>
    <message>
        <source>Authentication reject, GSM unacceptable</source>
        <translation>Rechazo de autenticación, GSM inaceptable</translation>
    </message>
    <message>
        <source>Network error, detached</source>
        <translation>Error de red, desconectado de la red</translation>
    </message>
    <message>
        <source>Network error, invalid mandatory info</source>
        <translation>Error de red, información obligatoria no válida</translation>
    </message>
    <message>
        <source>Network error, message invalid</source>
        <translation>Error de red, mensaje no válido</translation>
    </message>
    <message>
        <source>Network error, protocol state error</source>
        <translation>Error de red, error de estado de protocolo</translation>
    </message>
    <message>
        <source>Network error, invalid conditional info</source>
        <translation>Error de red, información condicional no válida</translation>
    </message>
    <message>
        <source>Network error, not compatible with protocol state</source>
        <translation>Error de red, no compatible con el estado de protocolo</translation>
    </message>
    <message>
        <source>Network error, unspecified protocol error</source>
        <translation>Error de red, error de protocolo sin especificar</translation>
    </message>
    <message>
        <source>Attach reject, detaching</source>
        <translation>Rechazo de conexión a red, desconexión de red en curso</translation>
    </message>
    <message>
        <source>Attach reject, powerdown</source>
        <translation>Rechazo de conexión a red, apagado</translation>
    </message>
    <message>
        <source>Attach reject, domain blocked</source>
        <translation>Rechazo de conexión a red, dominio bloqueado</translation>
    </message>
    <message>
        <source>Reject, missing PIN</source>
        <translation>Rechazo, falta el PIN</translation>
    </message>
    <message>
        <source>Reject, no selected PLMN</source>
        <translation>Rechazo, ninguna PLMN seleccionada</translation>
    </message>
    <message>
        <source>Reject, PLMN forbidden</source>
        <translation>Rechazo, PLMN prohibida</translation>
    </message>
    <message>
        <source>Reject, PLMN/GPRS not allowed</source>
        <translation>Rechazo, PLMN/GPRS no permitido</translation>
    </message>
    <message>
        <source> MB</source>
        <translation> MB</translation>
    </message>
    <message>
        <source>Help desk not configured.
See User Manual.</source>
        <translation>Asistencia no configurada
Consulte el manual de usuario</translation>
    </message>
    <message>
        <source>Unit serial number: </source>
        <translation>Número de serie de la unidad: </translation>
    </message>
    <message>
        <source>Unknown unit serial number</source>
        <translation>Número de serie de la unidad desconocido</translation>
    </message>
    <message>
        <source>Antenna serial number: </source>
        <translation>Número de serie de la antena: </translation>
    </message>
    <message>
        <source>Unknown antenna serial number</source>
        <translation>Número de serie de la antena desconocido</translation>
    </message>
    <message>
        <source>IMEI: </source>
        <translation>IMEI: </translation>
    </message>
    <message>
        <source>Unknown IMEI</source>
        <translation>IMEI desconocido</translation>
    </message>
    <message>
        <source>IP address: </source>
        <translation>Dirección IP: </translation>
    </message>
    <message>
        <source>Unknown MAC for LAN</source>
        <translation>MAC de LAN desconocida</translation>
    </message>
    <message>
        <source>Enable LAN to be able to read MAC for LAN</source>
        <translation>Active la LAN para poder leer la MAC de LAN</translation>
    </message>
    <message>
        <source>Unknown MAC for WLAN</source>
        <translation>MAC de Wi-Fi desconocida</translation>
    </message>
    <message>
        <source>Enable WLAN to be able to read MAC for WLAN</source>
        <translation>Active el Wi-Fi para poder leer la MAC de Wi-Fi</translation>
    </message>
    <message>
        <source>WLAN name: </source>
        <translation>Nombre Wi-Fi: </translation>
    </message>
    <message>
        <source>(WLAN name hidden)</source>
        <translation>(Nombre Wi-Fi oculto)</translation>
    </message>
    <message>
        <source>Software version: </source>
        <translation>Versión de software: </translation>
    </message>
    <message>
        <source>Build number: </source>
        <translation>Número de compilación: </translation>
    </message>
    <message>
        <source>Idle</source>
        <translation>Reposo</translation>
    </message>
    <message>
        <source>Charging</source>
        <translation>Cargando</translation>
    </message>
    <message>
        <source>Discharging</source>
        <translation>Descarga</translation>
    </message>
    <message>
        <source>Position acquired</source>
        <translation>Posición obtenida</translation>
    </message>
    <message>
        <source>N</source>
        <translation>N</translation>
    </message>
    <message>
        <source>S</source>
        <translation>S</translation>
    </message>
    <message>
        <source>E</source>
        <translation>E</translation>
    </message>
    <message>
        <source>W</source>
        <translation>O</translation>
    </message>
    <message>
        <source>Precharging</source>
        <translation>Precarga</translation>
    </message>
    <message>
        <source>C</source>
        <translation>C</translation>
    </message>
    <message>
        <source>Battery error!</source>
        <translation>¡Error de batería!</translation>
    </message>
    <message>
        <source>Remaining time %1:%2 h</source>
        <translation>Tiempo restante %1:%2 h</translation>
    </message>
    <message>
        <source>Remaining charge time %1:%2 h</source>
        <translation>Carga restante %1:%2 h</translation>
    </message>
    <message>
        <source>Estimating time...</source>
        <translation>Calculando tiempo...</translation>
    </message>
    <message>
        <source>Insert SIM</source>
        <translation>Inserte la SIM</translation>
    </message>
    <message>
        <source>Initializing SIM</source>
        <translation>Inicializando SIM</translation>
    </message>
    <message>
        <source>Enter PUK in web interface</source>
        <translation>Introduzca PUK
en la interfaz web</translation>
    </message>
    <message>
        <source>Enter PIN?</source>
        <translation>¿Introducir PIN?</translation>
    </message>
    <message>
        <source>Point now?</source>
        <translation>¿Apuntar ahora?</translation>
    </message>
    <message>
        <source>SIM Lock does not
match inserted SIM</source>
        <translation>El bloqueo SIM no coincide
con la SIM insertada</translation>
    </message>
    <message>
        <source>Searching</source>
        <translation>Buscando</translation>
    </message>
    <message>
        <source>Registering</source>
        <translation>Registrando</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Listo</translation>
    </message>
    <message>
        <source>External control</source>
        <translation>Control externo</translation>
    </message>
    <message>
        <source>Bonding slave mode</source>
        <translation>Modo esclavo
de agregación</translation>
    </message>
    <message>
        <source>HDR Half Asymmetric</source>
        <translation>HDR Half Asim.</translation>
    </message>
    <message>
        <source>HDR Half Symmetric</source>
        <translation>HDR Half Sim.</translation>
    </message>
    <message>
        <source>BGAN X-Stream</source>
        <translation>BGAN X-Stream</translation>
    </message>
    <message>
        <source>HDR Full Asymmetric</source>
        <translation>HDR Full Asim.</translation>
    </message>
    <message>
        <source>HDR Full Symmetric</source>
        <translation>HDR Full Sim.</translation>
    </message>
    <message>
        <source>2xHDR Full Asymmetric</source>
        <translation>2xHDR Full Asim.</translation>
    </message>
    <message>
        <source>2xHDR Full Symmetric</source>
        <translation>2xHDR Full Sim.</translation>
    </message>
    <message>
        <source>Standard data: </source>
        <translation>Datos estándar: </translation>
    </message>
    <message>
        <source>Unknown connection</source>
        <translation>Conex. desconoc.</translation>
    </message>
</context>
</TS>
