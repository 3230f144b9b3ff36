<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>ScreenAntenna</name>
    <message>
        <source>BGAN signal: </source>
        <translation>Signal BGAN&#xa0;: </translation>
    </message>
    <message>
        <source>Acquiring position: </source>
        <translation>Acquisition position&#xa0;: </translation>
    </message>
    <message>
        <source>Position: </source>
        <translation>Position&#xa0;: </translation>
    </message>
</context>
<context>
    <name>ScreenBattery</name>
    <message>
        <source>No battery connected</source>
        <translation>Aucune batterie connectée</translation>
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
        <translation>Temp.&#xa0;: </translation>
    </message>
</context>
<context>
    <name>ScreenEnterPin</name>
    <message>
        <source>Enter PIN: </source>
        <translation>Saisir le PIN&#xa0;: </translation>
    </message>
</context>
<context>
    <name>ScreenMenu</name>
    <message>
        <source>CONFORMITY_TEXT</source>
        <translation>Le fabricant déclare que le présent équipement radioélectrique est conforme à la directive 2014/53/UE. Le texte complet de la déclaration UE de conformité est disponible dans le manuel d&apos;utilisation.</translation>
    </message>
    <message>
        <source>Point now</source>
        <translation>Pointer maintenant</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Affichage</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>Luminosité</translation>
    </message>
    <message>
        <source>Level 1</source>
        <translation>Niveau 1</translation>
    </message>
    <message>
        <source>Level 2</source>
        <translation>Niveau 2</translation>
    </message>
    <message>
        <source>Level 3</source>
        <translation>Niveau 3</translation>
    </message>
    <message>
        <source>Level 4</source>
        <translation>Niveau 4</translation>
    </message>
    <message>
        <source>Level 5</source>
        <translation>Niveau 5</translation>
    </message>
    <message>
        <source>Level 6</source>
        <translation>Niveau 6</translation>
    </message>
    <message>
        <source>Level 7</source>
        <translation>Niveau 7</translation>
    </message>
    <message>
        <source>5 seconds</source>
        <translation>5 secondes</translation>
    </message>
    <message>
        <source>30 seconds</source>
        <translation>30 secondes</translation>
    </message>
    <message>
        <source>1 minute</source>
        <translation>1 minute</translation>
    </message>
    <message>
        <source>2 minutes</source>
        <translation>2 minutes</translation>
    </message>
    <message>
        <source>5 minutes</source>
        <translation>5 minutes</translation>
    </message>
    <message>
        <source>Audio indication</source>
        <translation>Signal sonore</translation>
    </message>
    <message>
        <source>Pointing</source>
        <translation>Pointage</translation>
    </message>
    <message>
        <source>On</source>
        <translation>Activé</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Désactivé</translation>
    </message>
    <message>
        <source>Power-up mode</source>
        <translation>Mise sous tension</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automatique</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>Manuelle</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Langue</translation>
    </message>
    <message>
        <source>Properties</source>
        <translation>Propriétés</translation>
    </message>
    <message>
        <source>IP address</source>
        <translation>Adresse IP</translation>
    </message>
    <message>
        <source>Hardware</source>
        <translation>Matériel</translation>
    </message>
    <message>
        <source>Unit serial number</source>
        <translation>Numéro de série du terminal</translation>
    </message>
    <message>
        <source>Antenna serial number</source>
        <translation>Numéro de série de l&apos;antenne</translation>
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
        <translation>Logiciel</translation>
    </message>
    <message>
        <source>Conformity</source>
        <translation>Conformité</translation>
    </message>
    <message>
        <source>IMEI</source>
        <translation>IMEI</translation>
    </message>
    <message>
        <source>Help desk</source>
        <translation>Assistance</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>Alertes</translation>
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
        <translation>Service limité</translation>
    </message>
    <message>
        <source>RM_EV_BDU_USIM_REJECTED</source>
        <translation>Carte SIM refusée</translation>
    </message>
    <message>
        <source>Timeout</source>
        <translation>Délai d&apos;expiration</translation>
    </message>
    <message>
        <source> kB</source>
        <translation> ko</translation>
    </message>
    <message>
        <source>MAC: </source>
        <translation>MAC&#xa0;: </translation>
    </message>
    <message>
        <source>Initializing</source>
        <translation>Initialisation</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>Connexion...</translation>
    </message>
    <message>
        <source> kbps</source>
        <translation> kbit/s</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Quitter</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Démarrer</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>StatusUpdater</name>
    <message>
        <source>RM_EV_INFOLVL_INFO</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>EV_ALARM_SIM_MODULE</source>
        <translation>Panne du lecteur SIM
Contacter l&apos;assistance</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMP_SENSOR</source>
        <translation>Panne du capteur de température
Contacter l&apos;assistance</translation>
    </message>
    <message>
        <source>EV_ALARM_GPS_MODULE</source>
        <translation>Panne du récepteur GPS
Contacter l&apos;assistance</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_NOT_PRESENT</source>
        <translation>Antenne non connectée
Vérifier le câble d&apos;antenne</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_LOW_CRITICAL</source>
        <translation>Température critique (très basse)
Laisser réchauffer le terminal</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_TOO_LOW</source>
        <translation>Température trop basse
Laisser réchauffer le terminal</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_HIGH_CRITICAL</source>
        <translation>Température critique (très élevée)
Laisser refroidir le terminal</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_TOO_HIGH</source>
        <translation>Température trop élevée
Laisser refroidir le terminal</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_SATELLITE_SIGNAL_LOST</source>
        <translation>Signal du satellite perdu
Dégager la vue ou repointer</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_CS_REGISTER_FAILED</source>
        <translation>Échec d&apos;enregistr. voix (CS)
Vérifier l&apos;abonnement</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_PS_REGISTER_FAILED</source>
        <translation>Échec d&apos;enregistr. données (PS)
Vérifier l&apos;abonnement</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_FAILURE</source>
        <translation>Panne de l&apos;antenne
Contacter l&apos;assistance</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_ERRORLOG_FLASH_FULL</source>
        <translation>Mémoire du journal d&apos;erreurs pleine
Contacter l&apos;assistance</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_INVALID_NETWORK</source>
        <translation>Réseau invalide
Vérifier carte SIM et abonnement</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_CABLE_CALIBRATION</source>
        <translation>Échec d&apos;étalonnage du câble
Vérifier le câble d&apos;antenne</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_DSP_ERROR</source>
        <translation>Erreur processeur de signal (DSP)
Redémarrer le terminal</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_SW_UPDATE_FAILURE</source>
        <translation>Échec de mise à jour antenne
Redémarrer le terminal</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_SW_UPDATE_PROBLEM</source>
        <translation>Problème de mise à jour antenne
Redémarrer le terminal</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_IMAGE_LOAD_FAILURE</source>
        <translation>Logiciel de l&apos;antenne non chargé
Redémarrer le terminal</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_ENTER_MAIN_FAIL</source>
        <translation>L&apos;antenne ne démarre pas
Redémarrer le terminal</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_HPA_COMM_FAIL</source>
        <translation>HPA d&apos;antenne injoignable
Vérifier le câble d&apos;antenne</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_REGISTER_REJ</source>
        <translation>Enregistrement refusé par le réseau
Vérifier l&apos;abonnement</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_DEREGISTER_COM</source>
        <translation>Désenregistré par le réseau</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_DEREGISTER</source>
        <translation>Désenregistré du réseau</translation>
    </message>
    <message>
        <source>RM_EV_BDU_FLASH_WRITE_LIMIT</source>
        <translation>Limite d&apos;écriture mém. flash atteinte
Contacter l&apos;assistance</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_STARTUP_TEMP_TOO_LOW</source>
        <translation>Antenne trop froide pour démarrer
Laisser réchauffer l&apos;antenne</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_STARTUP_TIMEOUT</source>
        <translation>Délai de démarrage antenne expiré
Vérifier câble, redémarrer terminal</translation>
    </message>
    <message>
        <source>RM_EV_BDU_TEMP_POE_SHUTDOWN</source>
        <translation>Temp. élevée&#xa0;: PoE arrêté
Laisser refroidir le terminal</translation>
    </message>
    <message>
        <source>RM_EV_BDU_TEMP_REDUCE_DATA</source>
        <translation>Temp. élevée&#xa0;: débit réduit
Laisser refroidir le terminal</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_ILLEGAL_COMBINATION</source>
        <translation>Antenne non adaptée au terminal
Utiliser antenne prise en charge</translation>
    </message>
    <message>
        <source>RM_EV_BDU_SATELLITE_NOT_VISIBLE</source>
        <translation>Satellite non visible
Chercher un lieu avec vue dégagée</translation>
    </message>
    <message>
        <source>RM_EV_BDU_USIM_MISSING</source>
        <translation>Carte SIM absente
Insérer la carte SIM</translation>
    </message>
    <message>
        <source>RM_EV_BDU_NAT_TABLE_FULL</source>
        <translation>Table NAT pleine
Réduire le nombre de connexions</translation>
    </message>
    <message>
        <source>EV_BDU_BP_ANTENNA_HOTSWAP_FAILURE</source>
        <translation>Antenne changée sous tension
Redémarrer le terminal</translation>
    </message>
    <message>
        <source>EV_BDU_BP_HPA_DC_RESISTOR_LOSS</source>
        <translation>Résistance du câble trop élevée
Vérifier le câble d&apos;antenne</translation>
    </message>
    <message>
        <source>EV_BDU_BP_ALIVE_ABSENT</source>
        <translation>L&apos;antenne ne répond pas
Vérifier câble, redémarrer terminal</translation>
    </message>
    <message>
        <source>EV_BDU_BP_CAPABILITY_CHECK_FAILURE</source>
        <translation>Échec contrôle capacités antenne
Utiliser antenne prise en charge</translation>
    </message>
    <message>
        <source>EV_BDU_BP_STARTUP_DONE_FAILURE</source>
        <translation>Démarrage de l&apos;antenne inachevé
Redémarrer le terminal</translation>
    </message>
    <message>
        <source>EV_HPA_CM_VOLTAGE</source>
        <translation>Tension HPA hors plage
Vérifier le câble d&apos;antenne</translation>
    </message>
    <message>
        <source>EV_HPA_CM_TEMP_RANGE</source>
        <translation>Température HPA hors plage
Abriter l&apos;antenne du chaud, du froid</translation>
    </message>
    <message>
        <source>EV_HPA_CM_TXRX_GAIN_RANGE</source>
        <translation>Gain HPA hors plage (TX/RX)
Contacter l&apos;assistance</translation>
    </message>
    <message>
        <source>EV_HPA_CM_UNEXPECTED_VOLTAGE</source>
        <translation>Tension HPA inattendue
Vérifier le câble d&apos;antenne</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NO_BUNDLES_DEFINED</source>
        <translation>Aucune connexion de données définie
En ajouter dans l&apos;interface web</translation>
    </message>
    <message>
        <source>EV_AP_GUI_VALIDATING_PIN</source>
        <translation>Vérification du PIN
Veuillez patienter</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CIPHERING_OFF</source>
        <translation>Chiffrement désactivé
Appels et données non protégés</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SEARCHING_FOR_MODEM</source>
        <translation>Recherche du modem externe
Vérifier qu&apos;il est connecté</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_LIMIT_EXCEEDED</source>
        <translation>Trop de connexions de données
En arrêter une et réessayer</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_AUTO_ACT_FAILED</source>
        <translation>Échec de connexion automatique
Démarrer la connexion manuellement</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_FAILED</source>
        <translation>Échec de connexion
Réessayer</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_LOST</source>
        <translation>Connexion perdue
La démarrer à nouveau</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NETWORK_FAILURE</source>
        <translation>Panne du réseau
Réessayer plus tard</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NETWORK_FAILURE_RETRY</source>
        <translation>Panne du réseau
Nouvelle tentative automatique</translation>
    </message>
    <message>
        <source>EV_AP_GUI_LAN_DISCONNECTED</source>
        <translation>LAN déconnecté
Vérifier le câble LAN</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NOT_ALL_ACTIVATED</source>
        <translation>Certaines connexions non démarrées
Arrêter, puis démarrer à nouveau</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_UNKNOWN</source>
        <translation>Échec de connexion&#xa0;: cause inconnue
Réessayer</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SW_UPDATE_ANTENNA</source>
        <translation>Mise à jour de l&apos;antenne en cours
Ne pas éteindre</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_CLOSED_REASON_LINK_MON_RECONNECT</source>
        <translation>Fermeture par surveillance de liaison
Reconnexion automatique</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SELECT_NETWORK_ON_WEB</source>
        <translation>Aucun réseau sélectionné
Le sélectionner dans l&apos;interface web</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STARTING_BUNDLE_NAME</source>
        <translation>Démarrage&#xa0;:
</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NOT_REGISTERED_TO_NETWORK</source>
        <translation>Non enregistré sur le réseau
Attendre l&apos;état Prêt</translation>
    </message>
    <message>
        <source>EV_AP_GUI_WRONG_PIN</source>
        <translation>PIN incorrect
Réessayer</translation>
    </message>
    <message>
        <source>No alerts</source>
        <translation>Aucune alerte</translation>
    </message>
    <message>
        <source>EV_AP_GUI_DHCP_CLIENT_WITHOUT_BONDING</source>
        <translation>Client DHCP sans agrégation
Modifier dans l&apos;interface web</translation>
    </message>
    <message>
        <source>EV_AP_GUI_INTERNAL_ERROR_REQ_REBOOT</source>
        <translation>Erreur interne
Redémarrer le terminal</translation>
    </message>
    <message>
        <source>EV_AP_GUI_MODEM_IN_USE</source>
        <translation>Modem externe en cours d&apos;utilisation</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_INITIALIZING</source>
        <translation>Initialisation en cours
Veuillez patienter</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_REBOOTING</source>
        <translation>Redémarrage en cours
Veuillez patienter</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_SHUTTING_DOWN</source>
        <translation>Arrêt en cours
Veuillez patienter</translation>
    </message>
    <message>
        <source>EV_NETMGR_SIMCARD_ERR</source>
        <translation>Modem&#xa0;: erreur de carte SIM
Vérifier la carte SIM du modem</translation>
    </message>
    <message>
        <source>EV_NETMGR_MODEM_ERR</source>
        <translation>Erreur du modem
Reconnecter le modem</translation>
    </message>
    <message>
        <source>EV_NETMGR_MODEM_UNSUPPORTED</source>
        <translation>Modem non pris en charge
Utiliser un autre modem</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_REDUCED_PERF</source>
        <translation>Temp. élevée&#xa0;: terminal ralenti
Laisser refroidir le terminal</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_USB</source>
        <translation>Temp. élevée&#xa0;: USB arrêté
Laisser refroidir le terminal</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_USB_EXT</source>
        <translation>Temp. élevée&#xa0;: USB ext. désactivé
Laisser refroidir le terminal</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_LIMIT_BACKGR</source>
        <translation>Temp. élevée&#xa0;: données ralenties
Laisser refroidir le terminal</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_CLOSE_CONN</source>
        <translation>Temp. élevée&#xa0;: données arrêtées
Laisser refroidir le terminal</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_CLOSE_TERM</source>
        <translation>Temp. élevée&#xa0;: arrêt en cours
Laisser refroidir le terminal</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_LOW</source>
        <translation>Température basse
Laisser réchauffer le terminal</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_POE</source>
        <translation>Temp. élevée&#xa0;: PoE désactivé
Laisser refroidir le terminal</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ON</source>
        <translation>Mise à jour du logiciel en cours
Ne pas éteindre</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ON_BATTERY_LOW</source>
        <translation>Mise à jour en cours, batterie faible
Brancher l&apos;alimentation</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_PREPARING_START</source>
        <translation>Préparation de la mise à jour
Ne pas éteindre</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SWPK_FILE_OPEN_ERROR</source>
        <translation>Échec de mise à jour&#xa0;: fichier illisible
Transférer à nouveau le fichier</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_BATTERY_LOW</source>
        <translation>Mise à jour refusée&#xa0;: batterie faible
Brancher l&apos;alimentation, réessayer</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_DOWNGRADE_PREVENTED</source>
        <translation>Mise à jour refusée&#xa0;: trop ancienne
Utiliser une version plus récente</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_SWPK_INVALID</source>
        <translation>Mise à jour refusée&#xa0;: fichier invalide
Utiliser le fichier de ce terminal</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_SWPK_CORRUPT</source>
        <translation>Fichier de mise à jour endommagé
Transférer à nouveau le fichier</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_START_FAILED</source>
        <translation>Mise à jour non démarrée
Réessayer</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ROLLED_BACK</source>
        <translation>Échec de mise à jour du logiciel
Ancienne version rétablie</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SW_INTEGRITY_ERROR</source>
        <translation>Logiciel endommagé
Mettre à jour dans l&apos;interface web</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SW_INTEGRITY_ERROR_ANT</source>
        <translation>Logiciel de l&apos;antenne endommagé
Mettre à jour dans l&apos;interface web</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_PREVIOUS_UPDATE_UNFINISHED</source>
        <translation>Mise à jour précédente inachevée
Redémarrer le terminal, réessayer</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_RELEASE_ALREADY_ACTIVE</source>
        <translation>Mise à jour refusée
Cette version est déjà utilisée</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_GENERAL_ERROR</source>
        <translation>Échec de mise à jour en ligne
Réessayer plus tard</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_PDP_CONTEXT_FAILED</source>
        <translation>Mise à jour en ligne&#xa0;: non connecté
Réessayer plus tard</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_URL_CONNECT_FAILED</source>
        <translation>Mise à jour&#xa0;: serveur injoignable
Réessayer plus tard</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_TRANSFER_ERROR</source>
        <translation>Mise à jour&#xa0;: échec du transfert
Réessayer</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_TRANSFER_TIMEOUT</source>
        <translation>Mise à jour&#xa0;: délai transfert expiré
Réessayer</translation>
    </message>
    <message>
        <source>EV_PSU_CALIBRATION_ERROR</source>
        <translation>Erreur d&apos;étalonnage alimentation
Contacter l&apos;assistance</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_LOW</source>
        <translation>Batterie faible
Brancher l&apos;alimentation</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_TEMP_LOW</source>
        <translation>Batterie trop froide
Laisser réchauffer la batterie</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_TEMP_HIGH</source>
        <translation>Batterie trop chaude
Laisser refroidir la batterie</translation>
    </message>
    <message>
        <source>Operator Determined Barring</source>
        <translation>Interdiction définie par l&apos;opérateur</translation>
    </message>
    <message>
        <source>LLC or SNDCP failure</source>
        <translation>Échec LLC ou SNDCP</translation>
    </message>
    <message>
        <source>Insufficient resources</source>
        <translation>Ressources insuffisantes</translation>
    </message>
    <message>
        <source>Missing or unknown APN</source>
        <translation>APN absent ou inconnu</translation>
    </message>
    <message>
        <source>Unknown PDP address or PDP type</source>
        <translation>Adresse PDP ou type PDP inconnu</translation>
    </message>
    <message>
        <source>User authentication failed</source>
        <translation>Échec d&apos;authentification utilisateur</translation>
    </message>
    <message>
        <source>Activation rejected by GGSN</source>
        <translation>Activation refusée par le GGSN</translation>
    </message>
    <message>
        <source>Activation rejected, unspecified</source>
        <translation>Activation refusée, sans précision</translation>
    </message>
    <message>
        <source>Service option not supported</source>
        <translation>Option de service non prise en charge</translation>
    </message>
    <message>
        <source>Requested service option not subscribed</source>
        <translation>Option de service demandée non souscrite</translation>
    </message>
    <message>
        <source>Service option temporarily out of order</source>
        <translation>Option de service temporairement hors service</translation>
    </message>
    <message>
        <source>NSAPI already used</source>
        <translation>NSAPI déjà utilisé</translation>
    </message>
    <message>
        <source>Normal deactivation</source>
        <translation>Désactivation normale</translation>
    </message>
    <message>
        <source>QoS not accepted</source>
        <translation>QoS non acceptée</translation>
    </message>
    <message>
        <source>Activation rejected, Network failure</source>
        <translation>Activation refusée, panne du réseau</translation>
    </message>
    <message>
        <source>Reactivation required</source>
        <translation>Réactivation requise</translation>
    </message>
    <message>
        <source>Feature not supported</source>
        <translation>Fonction non prise en charge</translation>
    </message>
    <message>
        <source>Semantic error in the TFT operation</source>
        <translation>Erreur sémantique dans l&apos;opération TFT</translation>
    </message>
    <message>
        <source>Syntactical error in the TFT operation</source>
        <translation>Erreur de syntaxe dans l&apos;opération TFT</translation>
    </message>
    <message>
        <source>Unknown PDP context</source>
        <translation>Contexte PDP inconnu</translation>
    </message>
    <message>
        <source>Semantic errors in packet filter(s)</source>
        <translation>Erreurs sémantiques dans le(s) filtre(s) de paquets</translation>
    </message>
    <message>
        <source>Syntactical errors in packet filter(s)</source>
        <translation>Erreurs de syntaxe dans le(s) filtre(s) de paquets</translation>
    </message>
    <message>
        <source>PDP context without TFT already activated</source>
        <translation>Contexte PDP sans TFT déjà activé</translation>
    </message>
    <message>
        <source>Reject, detaching</source>
        <translation>Refus, détachement en cours</translation>
    </message>
    <message>
        <source>PS attach rejected</source>
        <translation>Rattachement PS refusé</translation>
    </message>
    <message>
        <source>Activation error, invalid</source>
        <translation>Erreur d&apos;activation, invalide</translation>
    </message>
    <message>
        <source>Re-activation timeout</source>
        <translation>Délai de réactivation expiré</translation>
    </message>
    <message>
        <source>Attach reject, timeout</source>
        <translation>Refus de rattachement, délai expiré</translation>
    </message>
    <message>
        <source>Normal deactivation (from Core Network)</source>
        <translation>Désactivation normale (par le réseau coeur)</translation>
    </message>
    <message>
        <source>Normal deactivation (power down or reboot)</source>
        <translation>Désactivation normale (mise hors tension ou redémarrage)</translation>
    </message>
    <message>
        <source>Normal deactivation (PDP context removed)</source>
        <translation>Désactivation normale (contexte PDP supprimé)</translation>
    </message>
    <message>
        <source>Normal deactivation (AT command)</source>
        <translation>Désactivation normale (commande AT)</translation>
    </message>
    <message>
        <source>Reject, unspecified</source>
        <translation>Refus, sans précision</translation>
    </message>
    <message>
        <source>Reject, reattach required</source>
        <translation>Refus, nouveau rattachement requis</translation>
    </message>
    <message>
        <source>Connection timeout</source>
        <translation>Délai de connexion expiré</translation>
    </message>
    <message>
        <source>Reject, authentication failure</source>
        <translation>Refus, échec d&apos;authentification</translation>
    </message>
    <message>
        <source>Reject, network invalid</source>
        <translation>Refus, réseau invalide</translation>
    </message>
    <message>
        <source>Attach Reject, not allowed</source>
        <translation>Refus de rattachement, non autorisé</translation>
    </message>
    <message>
        <source>Reject, normal detach</source>
        <translation>Refus, détachement normal</translation>
    </message>
    <message>
        <source>Attach reject, no IMSI</source>
        <translation>Refus de rattachement, aucun IMSI</translation>
    </message>
    <message>
        <source>Attach reject, Service request denied</source>
        <translation>Refus de rattachement, demande de service refusée</translation>
    </message>
    <message>
        <source>Attach reject, searching for PLMN</source>
        <translation>Refus de rattachement, recherche de PLMN</translation>
    </message>
    <message>
        <source>Establish Reject, normal</source>
        <translation>Refus d&apos;établissement, normal</translation>
    </message>
    <message>
        <source>Establish Reject, Radio Network failure</source>
        <translation>Refus d&apos;établissement, panne du réseau radio</translation>
    </message>
    <message>
        <source>Establish Reject, congestion</source>
        <translation>Refus d&apos;établissement, congestion</translation>
    </message>
    <message>
        <source>Establish Reject, unsupported IAI version</source>
        <translation>Refus d&apos;établissement, version IAI non prise en charge</translation>
    </message>
    <message>
        <source>Establish Reject, unsupported UE class</source>
        <translation>Refus d&apos;établissement, classe UE non prise en charge</translation>
    </message>
    <message>
        <source>Establish Reject, USIM required</source>
        <translation>Refus d&apos;établissement, USIM requise</translation>
    </message>
    <message>
        <source>Establish Reject, physical channel failure</source>
        <translation>Refus d&apos;établissement, panne du canal physique</translation>
    </message>
    <message>
        <source>Establish Reject, access Class not allowed</source>
        <translation>Refus d&apos;établissement, classe d&apos;accès non autorisée</translation>
    </message>
    <message>
        <source>Establish Reject, unspecified</source>
        <translation>Refus d&apos;établissement, sans précision</translation>
    </message>
    <message>
        <source>Conn. release, normal</source>
        <translation>Libération de la connexion, normale</translation>
    </message>
    <message>
        <source>Conn. release, Radio Network security failure</source>
        <translation>Libération de la connexion, échec de sécurité du réseau radio</translation>
    </message>
    <message>
        <source>Conn. release, physical channel failure</source>
        <translation>Libération de la connexion, panne du canal physique</translation>
    </message>
    <message>
        <source>Conn. release, PLMN Search</source>
        <translation>Libération de la connexion, recherche de PLMN</translation>
    </message>
    <message>
        <source>Conn. release, security command failure</source>
        <translation>Libération de la connexion, échec de la commande de sécurité</translation>
    </message>
    <message>
        <source>Deregister, unknown cause</source>
        <translation>Désenregistrement, cause inconnue</translation>
    </message>
    <message>
        <source>Deregister, register with no complete</source>
        <translation>Désenregistrement, enregistrement inachevé</translation>
    </message>
    <message>
        <source>Deregister, service area BARRED</source>
        <translation>Désenregistrement, zone de service interdite</translation>
    </message>
    <message>
        <source>Deregister, position required</source>
        <translation>Désenregistrement, position requise</translation>
    </message>
    <message>
        <source>Deregister, Core Network reset</source>
        <translation>Désenregistrement, réinitialisation du réseau coeur</translation>
    </message>
    <message>
        <source>Deregister, inactivity</source>
        <translation>Désenregistrement, inactivité</translation>
    </message>
    <message>
        <source>Deregister, position response not received</source>
        <translation>Désenregistrement, réponse de position non reçue</translation>
    </message>
    <message>
        <source>Deregister, position age expired</source>
        <translation>Désenregistrement, validité de la position expirée</translation>
    </message>
    <message>
        <source>Deregister, decryption error</source>
        <translation>Désenregistrement, erreur de déchiffrement</translation>
    </message>
    <message>
        <source>Deregister, user specified position not permitted</source>
        <translation>Désenregistrement, position indiquée par l&apos;utilisateur non autorisée</translation>
    </message>
    <message>
        <source>Deregister, Radio Network initiated Deregistration</source>
        <translation>Désenregistrement, à l&apos;initiative du réseau radio</translation>
    </message>
    <message>
        <source>Deregister, tracked SAT below minimum</source>
        <translation>Désenregistrement, satellite suivi sous le minimum</translation>
    </message>
    <message>
        <source>Deregister, Lease Group not available</source>
        <translation>Désenregistrement, groupe de location non disponible</translation>
    </message>
    <message>
        <source>Deregister, Lease Mode handover failed</source>
        <translation>Désenregistrement, échec du transfert en mode location</translation>
    </message>
    <message>
        <source>Deregister, Radio Failure</source>
        <translation>Désenregistrement, panne radio</translation>
    </message>
    <message>
        <source>Deregister, Unsupported UE subclass</source>
        <translation>Désenregistrement, sous-classe UE non prise en charge</translation>
    </message>
    <message>
        <source>Deregister, Elevation too low</source>
        <translation>Désenregistrement, élévation trop faible</translation>
    </message>
    <message>
        <source>Deregister, Protocol Failure</source>
        <translation>Désenregistrement, échec de protocole</translation>
    </message>
    <message>
        <source>Deregister, Invalid UE capabilities</source>
        <translation>Désenregistrement, capacités UE invalides</translation>
    </message>
    <message>
        <source>Network failure IMSI unknown (HLR)</source>
        <translation>Panne du réseau, IMSI inconnu (HLR)</translation>
    </message>
    <message>
        <source>Network failure, Mobile Station illegal</source>
        <translation>Panne du réseau, station mobile illégale</translation>
    </message>
    <message>
        <source>Network failure, Mobile Equipment illegal</source>
        <translation>Panne du réseau, équipement mobile illégal</translation>
    </message>
    <message>
        <source>Attach reject, GPRS not allowed</source>
        <translation>Refus de rattachement, GPRS non autorisé</translation>
    </message>
    <message>
        <source>Attach reject, services not allowed</source>
        <translation>Refus de rattachement, services non autorisés</translation>
    </message>
    <message>
        <source>Network failure, Mobile station id unknown</source>
        <translation>Panne du réseau, identité de la station mobile inconnue</translation>
    </message>
    <message>
        <source>Network failure, implicitly detached</source>
        <translation>Panne du réseau, détachement implicite</translation>
    </message>
    <message>
        <source>Network failure, PLMN not allowed</source>
        <translation>Panne du réseau, PLMN non autorisé</translation>
    </message>
    <message>
        <source>Network failure, Location area not allowed</source>
        <translation>Panne du réseau, zone de localisation non autorisée</translation>
    </message>
    <message>
        <source>Network failure, roaming not allowed at location</source>
        <translation>Panne du réseau, itinérance non autorisée à cet endroit</translation>
    </message>
    <message>
        <source>Network failure, no GPRS service allowed</source>
        <translation>Panne du réseau, aucun service GPRS autorisé</translation>
    </message>
    <message>
        <source>Network failure, no service at location</source>
        <translation>Panne du réseau, aucun service à cet endroit</translation>
    </message>
    <message>
        <source>Network failure, service temporarily unreachable</source>
        <translation>Panne du réseau, service temporairement injoignable</translation>
    </message>
    <message>
        <source>Network failure, PLMN failure</source>
        <translation>Panne du réseau, panne du PLMN</translation>
    </message>
    <message>
        <source>Authentication reject, MAC failure</source>
        <translation>Refus d&apos;authentification, échec MAC</translation>
    </message>
    <message>
        <source>Authentication reject, sync failure</source>
        <translation>Refus d&apos;authentification, échec de synchronisation</translation>
    </message>
    <message>
        <source>Network failure, congestion</source>
        <translation>Panne du réseau, congestion</translation>
    </message>
    <message>
        <source>Authentication reject, GSM unacceptable</source>
        <translation>Refus d&apos;authentification, GSM inacceptable</translation>
    </message>
    <message>
        <source>Network error, detached</source>
        <translation>Erreur du réseau, terminal détaché</translation>
    </message>
    <message>
        <source>Network error, invalid mandatory info</source>
        <translation>Erreur du réseau, information obligatoire invalide</translation>
    </message>
    <message>
        <source>Network error, message invalid</source>
        <translation>Erreur du réseau, message invalide</translation>
    </message>
    <message>
        <source>Network error, protocol state error</source>
        <translation>Erreur du réseau, erreur d&apos;état du protocole</translation>
    </message>
    <message>
        <source>Network error, invalid conditional info</source>
        <translation>Erreur du réseau, information conditionnelle invalide</translation>
    </message>
    <message>
        <source>Network error, not compatible with protocol state</source>
        <translation>Erreur du réseau, incompatible avec l&apos;état du protocole</translation>
    </message>
    <message>
        <source>Network error, unspecified protocol error</source>
        <translation>Erreur du réseau, erreur de protocole sans précision</translation>
    </message>
    <message>
        <source>Attach reject, detaching</source>
        <translation>Refus de rattachement, détachement en cours</translation>
    </message>
    <message>
        <source>Attach reject, powerdown</source>
        <translation>Refus de rattachement, mise hors tension</translation>
    </message>
    <message>
        <source>Attach reject, domain blocked</source>
        <translation>Refus de rattachement, domaine bloqué</translation>
    </message>
    <message>
        <source>Reject, missing PIN</source>
        <translation>Refus, PIN absent</translation>
    </message>
    <message>
        <source>Reject, no selected PLMN</source>
        <translation>Refus, aucun PLMN sélectionné</translation>
    </message>
    <message>
        <source>Reject, PLMN forbidden</source>
        <translation>Refus, PLMN interdit</translation>
    </message>
    <message>
        <source>Reject, PLMN/GPRS not allowed</source>
        <translation>Refus, PLMN/GPRS non autorisé</translation>
    </message>
    <message>
        <source> MB</source>
        <translation> Mo</translation>
    </message>
    <message>
        <source>Help desk not configured.
See User Manual.</source>
        <translation>Assistance non configurée
Voir le manuel d&apos;utilisation</translation>
    </message>
    <message>
        <source>Unit serial number: </source>
        <translation>Numéro de série du terminal&#xa0;: </translation>
    </message>
    <message>
        <source>Unknown unit serial number</source>
        <translation>Numéro de série du terminal inconnu</translation>
    </message>
    <message>
        <source>Antenna serial number: </source>
        <translation>Numéro de série de l&apos;antenne&#xa0;: </translation>
    </message>
    <message>
        <source>Unknown antenna serial number</source>
        <translation>Numéro de série de l&apos;antenne inconnu</translation>
    </message>
    <message>
        <source>IMEI: </source>
        <translation>IMEI&#xa0;: </translation>
    </message>
    <message>
        <source>Unknown IMEI</source>
        <translation>IMEI inconnu</translation>
    </message>
    <message>
        <source>IP address: </source>
        <translation>Adresse IP&#xa0;: </translation>
    </message>
    <message>
        <source>Unknown MAC for LAN</source>
        <translation>Adresse MAC du LAN inconnue</translation>
    </message>
    <message>
        <source>Enable LAN to be able to read MAC for LAN</source>
        <translation>Activer le LAN pour lire son adresse MAC</translation>
    </message>
    <message>
        <source>Unknown MAC for WLAN</source>
        <translation>Adresse MAC du Wi-Fi inconnue</translation>
    </message>
    <message>
        <source>Enable WLAN to be able to read MAC for WLAN</source>
        <translation>Activer le Wi-Fi pour lire son adresse MAC</translation>
    </message>
    <message>
        <source>WLAN name: </source>
        <translation>Nom Wi-Fi&#xa0;: </translation>
    </message>
    <message>
        <source>(WLAN name hidden)</source>
        <translation>(Nom Wi-Fi masqué)</translation>
    </message>
    <message>
        <source>Software version: </source>
        <translation>Version du logiciel&#xa0;: </translation>
    </message>
    <message>
        <source>Build number: </source>
        <translation>Numéro de build&#xa0;: </translation>
    </message>
    <message>
        <source>Idle</source>
        <translation>Repos</translation>
    </message>
    <message>
        <source>Charging</source>
        <translation>En charge</translation>
    </message>
    <message>
        <source>Discharging</source>
        <translation>Décharge</translation>
    </message>
    <message>
        <source>Position acquired</source>
        <translation>Position acquise</translation>
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
        <translation>Précharge</translation>
    </message>
    <message>
        <source>C</source>
        <translation>C</translation>
    </message>
    <message>
        <source>Battery error!</source>
        <translation>Erreur de batterie&#xa0;!</translation>
    </message>
    <message>
        <source>Remaining time %1:%2 h</source>
        <translation>Temps restant %1:%2 h</translation>
    </message>
    <message>
        <source>Remaining charge time %1:%2 h</source>
        <translation>Fin de charge dans %1:%2 h</translation>
    </message>
    <message>
        <source>Estimating time...</source>
        <translation>Estimation du temps...</translation>
    </message>
    <message>
        <source>Insert SIM</source>
        <translation>Insérer la carte SIM</translation>
    </message>
    <message>
        <source>Initializing SIM</source>
        <translation>Initialisation de la carte SIM</translation>
    </message>
    <message>
        <source>Enter PUK in web interface</source>
        <translation>Saisir le PUK
dans l&apos;interface web</translation>
    </message>
    <message>
        <source>Enter PIN?</source>
        <translation>Saisir le PIN&#xa0;?</translation>
    </message>
    <message>
        <source>Point now?</source>
        <translation>Pointer maintenant&#xa0;?</translation>
    </message>
    <message>
        <source>SIM Lock does not
match inserted SIM</source>
        <translation>Carte SIM non conforme
au verrouillage SIM</translation>
    </message>
    <message>
        <source>Searching</source>
        <translation>Recherche</translation>
    </message>
    <message>
        <source>Registering</source>
        <translation>Enregistrement</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Prêt</translation>
    </message>
    <message>
        <source>External control</source>
        <translation>Contrôle externe</translation>
    </message>
    <message>
        <source>Bonding slave mode</source>
        <translation>Mode esclave d&apos;agrégation</translation>
    </message>
    <message>
        <source>HDR Half Asymmetric</source>
        <translation>HDR Half Asym.</translation>
    </message>
    <message>
        <source>HDR Half Symmetric</source>
        <translation>HDR Half Sym.</translation>
    </message>
    <message>
        <source>BGAN X-Stream</source>
        <translation>BGAN X-Stream</translation>
    </message>
    <message>
        <source>HDR Full Asymmetric</source>
        <translation>HDR Full Asym.</translation>
    </message>
    <message>
        <source>HDR Full Symmetric</source>
        <translation>HDR Full Sym.</translation>
    </message>
    <message>
        <source>2xHDR Full Asymmetric</source>
        <translation>2xHDR Full Asym.</translation>
    </message>
    <message>
        <source>2xHDR Full Symmetric</source>
        <translation>2xHDR Full Sym.</translation>
    </message>
    <message>
        <source>Standard data: </source>
        <translation>Données std.&#xa0;: </translation>
    </message>
    <message>
        <source>Unknown connection</source>
        <translation>Conn. inconnue</translation>
    </message>
</context>
</TS>
