<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ru" sourcelanguage="en">
<context>
    <name>ScreenAntenna</name>
    <message>
        <source>BGAN signal: </source>
        <translation>Сигнал BGAN: </translation>
    </message>
    <message>
        <source>Acquiring position: </source>
        <translation>Опред. координат: </translation>
    </message>
    <message>
        <source>Position: </source>
        <translation>Координаты: </translation>
    </message>
</context>
<context>
    <name>ScreenBattery</name>
    <message>
        <source>No battery connected</source>
        <translation>Батарея не подключена</translation>
    </message>
    <message>
        <source>Int</source>
        <translation>Внут</translation>
    </message>
    <message>
        <source>Ext</source>
        <translation>Внеш</translation>
    </message>
    <message>
        <source>Temp: </source>
        <translation>Темп.: </translation>
    </message>
</context>
<context>
    <name>ScreenEnterPin</name>
    <message>
        <source>Enter PIN: </source>
        <translation>Введите PIN: </translation>
    </message>
</context>
<context>
    <name>ScreenMenu</name>
    <message>
        <source>CONFORMITY_TEXT</source>
        <translation>Изготовитель настоящим заявляет, что данное радиооборудование соответствует Директиве 2014/53/ЕС. Полный текст декларации соответствия ЕС приведен в руководстве.</translation>
    </message>
    <message>
        <source>Point now</source>
        <translation>Навести антенну</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Настройки</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Экран</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>Яркость</translation>
    </message>
    <message>
        <source>Level 1</source>
        <translation>Уровень 1</translation>
    </message>
    <message>
        <source>Level 2</source>
        <translation>Уровень 2</translation>
    </message>
    <message>
        <source>Level 3</source>
        <translation>Уровень 3</translation>
    </message>
    <message>
        <source>Level 4</source>
        <translation>Уровень 4</translation>
    </message>
    <message>
        <source>Level 5</source>
        <translation>Уровень 5</translation>
    </message>
    <message>
        <source>Level 6</source>
        <translation>Уровень 6</translation>
    </message>
    <message>
        <source>Level 7</source>
        <translation>Уровень 7</translation>
    </message>
    <message>
        <source>5 seconds</source>
        <translation>5 секунд</translation>
    </message>
    <message>
        <source>30 seconds</source>
        <translation>30 секунд</translation>
    </message>
    <message>
        <source>1 minute</source>
        <translation>1 минута</translation>
    </message>
    <message>
        <source>2 minutes</source>
        <translation>2 минуты</translation>
    </message>
    <message>
        <source>5 minutes</source>
        <translation>5 минут</translation>
    </message>
    <message>
        <source>Audio indication</source>
        <translation>Звуковой сигнал</translation>
    </message>
    <message>
        <source>Pointing</source>
        <translation>Наведение</translation>
    </message>
    <message>
        <source>On</source>
        <translation>Вкл</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Выкл</translation>
    </message>
    <message>
        <source>Power-up mode</source>
        <translation>Режим включения</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Автоматический</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>Ручной</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Язык</translation>
    </message>
    <message>
        <source>Properties</source>
        <translation>Свойства</translation>
    </message>
    <message>
        <source>IP address</source>
        <translation>IP-адрес</translation>
    </message>
    <message>
        <source>Hardware</source>
        <translation>Оборудование</translation>
    </message>
    <message>
        <source>Unit serial number</source>
        <translation>Серийный номер терминала</translation>
    </message>
    <message>
        <source>Antenna serial number</source>
        <translation>Серийный номер антенны</translation>
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
        <translation>ПО</translation>
    </message>
    <message>
        <source>Conformity</source>
        <translation>Соответствие</translation>
    </message>
    <message>
        <source>IMEI</source>
        <translation>IMEI</translation>
    </message>
    <message>
        <source>Help desk</source>
        <translation>Служба поддержки</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>Оповещения</translation>
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
        <translation>Огранич. обслуживание</translation>
    </message>
    <message>
        <source>RM_EV_BDU_USIM_REJECTED</source>
        <translation>SIM-карта отклонена</translation>
    </message>
    <message>
        <source>Timeout</source>
        <translation>Тайм-аут</translation>
    </message>
    <message>
        <source> kB</source>
        <translation> кБ</translation>
    </message>
    <message>
        <source>MAC: </source>
        <translation>MAC: </translation>
    </message>
    <message>
        <source>Initializing</source>
        <translation>Инициализация</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>Соединение…</translation>
    </message>
    <message>
        <source> kbps</source>
        <translation> кбит/с</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Выход</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Старт</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Стоп</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Отмена</translation>
    </message>
</context>
<context>
    <name>StatusUpdater</name>
    <message>
        <source>RM_EV_INFOLVL_INFO</source>
        <translation>Информация</translation>
    </message>
    <message>
        <source>EV_ALARM_SIM_MODULE</source>
        <translation>Неисправен SIM-считыватель
Обратитесь в поддержку</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMP_SENSOR</source>
        <translation>Неисправен термодатчик
Обратитесь в поддержку</translation>
    </message>
    <message>
        <source>EV_ALARM_GPS_MODULE</source>
        <translation>Неисправен приемник GPS
Обратитесь в поддержку</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_NOT_PRESENT</source>
        <translation>Антенна не подключена
Проверьте кабель антенны</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_LOW_CRITICAL</source>
        <translation>Критически низкая темп.
Дайте терминалу прогреться</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_TOO_LOW</source>
        <translation>Слишком низкая температура
Дайте терминалу прогреться</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_HIGH_CRITICAL</source>
        <translation>Критически высокая темп.
Дайте терминалу остыть</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_TOO_HIGH</source>
        <translation>Слишком высокая температура
Дайте терминалу остыть</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_SATELLITE_SIGNAL_LOST</source>
        <translation>Сигнал спутника потерян
Уберите преграды, наведите</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_CS_REGISTER_FAILED</source>
        <translation>Сбой регистрации голоса (CS)
Проверьте подписку</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_PS_REGISTER_FAILED</source>
        <translation>Сбой регистрации данных (PS)
Проверьте подписку</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_FAILURE</source>
        <translation>Неисправна антенна
Обратитесь в поддержку</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_ERRORLOG_FLASH_FULL</source>
        <translation>Журнал ошибок заполнен
Обратитесь в поддержку</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_INVALID_NETWORK</source>
        <translation>Недопустимая сеть
Проверьте SIM и подписку</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_CABLE_CALIBRATION</source>
        <translation>Сбой калибровки кабеля
Проверьте кабель антенны</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_DSP_ERROR</source>
        <translation>Ошибка сигн. процессора DSP
Перезапустите терминал</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_SW_UPDATE_FAILURE</source>
        <translation>Сбой обновления ПО антенны
Перезапустите терминал</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_SW_UPDATE_PROBLEM</source>
        <translation>Проблема обновл. ПО антенны
Перезапустите терминал</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_IMAGE_LOAD_FAILURE</source>
        <translation>ПО антенны не загружено
Перезапустите терминал</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_ENTER_MAIN_FAIL</source>
        <translation>Антенна не запускается
Перезапустите терминал</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_HPA_COMM_FAIL</source>
        <translation>Нет связи с HPA антенны
Проверьте кабель антенны</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_REGISTER_REJ</source>
        <translation>Сеть отклонила регистрацию
Проверьте подписку</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_DEREGISTER_COM</source>
        <translation>Дерегистрация сетью</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_DEREGISTER</source>
        <translation>Дерегистрация в сети</translation>
    </message>
    <message>
        <source>RM_EV_BDU_FLASH_WRITE_LIMIT</source>
        <translation>Исчерпан ресурс флеш-памяти
Обратитесь в поддержку</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_STARTUP_TEMP_TOO_LOW</source>
        <translation>Слишком холодно для запуска
Дайте антенне прогреться</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_STARTUP_TIMEOUT</source>
        <translation>Тайм-аут запуска антенны
Проверьте кабель, перезапуск</translation>
    </message>
    <message>
        <source>RM_EV_BDU_TEMP_POE_SHUTDOWN</source>
        <translation>Перегрев: PoE выключено
Дайте терминалу остыть</translation>
    </message>
    <message>
        <source>RM_EV_BDU_TEMP_REDUCE_DATA</source>
        <translation>Перегрев: скорость снижена
Дайте терминалу остыть</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_ILLEGAL_COMBINATION</source>
        <translation>Антенна несовместима
Нужна поддерживаемая антенна</translation>
    </message>
    <message>
        <source>RM_EV_BDU_SATELLITE_NOT_VISIBLE</source>
        <translation>Спутник не виден
Обеспечьте прямую видимость</translation>
    </message>
    <message>
        <source>RM_EV_BDU_USIM_MISSING</source>
        <translation>Нет SIM-карты
Вставьте SIM-карту</translation>
    </message>
    <message>
        <source>RM_EV_BDU_NAT_TABLE_FULL</source>
        <translation>Таблица NAT заполнена
Уменьшите число соединений</translation>
    </message>
    <message>
        <source>EV_BDU_BP_ANTENNA_HOTSWAP_FAILURE</source>
        <translation>Замена антенны под питанием
Перезапустите терминал</translation>
    </message>
    <message>
        <source>EV_BDU_BP_HPA_DC_RESISTOR_LOSS</source>
        <translation>Сопротивление кабеля велико
Проверьте кабель антенны</translation>
    </message>
    <message>
        <source>EV_BDU_BP_ALIVE_ABSENT</source>
        <translation>Антенна не отвечает
Проверьте кабель, перезапуск</translation>
    </message>
    <message>
        <source>EV_BDU_BP_CAPABILITY_CHECK_FAILURE</source>
        <translation>Антенна не прошла проверку
Нужна поддерживаемая антенна</translation>
    </message>
    <message>
        <source>EV_BDU_BP_STARTUP_DONE_FAILURE</source>
        <translation>Запуск антенны не завершен
Перезапустите терминал</translation>
    </message>
    <message>
        <source>EV_HPA_CM_VOLTAGE</source>
        <translation>Напряжение HPA вне нормы
Проверьте кабель антенны</translation>
    </message>
    <message>
        <source>EV_HPA_CM_TEMP_RANGE</source>
        <translation>Температура HPA вне нормы
Защитите от жары и холода</translation>
    </message>
    <message>
        <source>EV_HPA_CM_TXRX_GAIN_RANGE</source>
        <translation>Усиление HPA TX/RX вне нормы
Обратитесь в поддержку</translation>
    </message>
    <message>
        <source>EV_HPA_CM_UNEXPECTED_VOLTAGE</source>
        <translation>Неожиданное напряжение HPA
Проверьте кабель антенны</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NO_BUNDLES_DEFINED</source>
        <translation>Соединения не заданы
Добавьте их в веб-интерфейсе</translation>
    </message>
    <message>
        <source>EV_AP_GUI_VALIDATING_PIN</source>
        <translation>Проверка PIN
Подождите</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CIPHERING_OFF</source>
        <translation>Шифрование выключено
Звонки и данные не защищены</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SEARCHING_FOR_MODEM</source>
        <translation>Поиск внешнего модема
Проверьте подключение</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_LIMIT_EXCEEDED</source>
        <translation>Слишком много соединений
Остановите одно и повторите</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_AUTO_ACT_FAILED</source>
        <translation>Сбой автосоединения
Запустите соединение вручную</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_FAILED</source>
        <translation>Сбой соединения
Повторите попытку</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_LOST</source>
        <translation>Соединение потеряно
Запустите его снова</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NETWORK_FAILURE</source>
        <translation>Сбой сети
Повторите позже</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NETWORK_FAILURE_RETRY</source>
        <translation>Сбой сети
Автоматический повтор</translation>
    </message>
    <message>
        <source>EV_AP_GUI_LAN_DISCONNECTED</source>
        <translation>LAN отключена
Проверьте кабель LAN</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NOT_ALL_ACTIVATED</source>
        <translation>Не все соединения запущены
Остановите и запустите снова</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_UNKNOWN</source>
        <translation>Сбой соед.: причина неизвестна
Повторите попытку</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SW_UPDATE_ANTENNA</source>
        <translation>Обновление ПО антенны
Не выключайте</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_CLOSED_REASON_LINK_MON_RECONNECT</source>
        <translation>Закрыто контролем канала
Автоматическое переподключение</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SELECT_NETWORK_ON_WEB</source>
        <translation>Сеть не выбрана
Выберите ее в веб-интерфейсе</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STARTING_BUNDLE_NAME</source>
        <translation>Запуск:
</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NOT_REGISTERED_TO_NETWORK</source>
        <translation>Нет регистрации в сети
Дождитесь статуса «Готов»</translation>
    </message>
    <message>
        <source>EV_AP_GUI_WRONG_PIN</source>
        <translation>Неверный PIN
Повторите попытку</translation>
    </message>
    <message>
        <source>No alerts</source>
        <translation>Нет оповещений</translation>
    </message>
    <message>
        <source>EV_AP_GUI_DHCP_CLIENT_WITHOUT_BONDING</source>
        <translation>DHCP-клиент без объед. каналов
Измените в веб-интерфейсе</translation>
    </message>
    <message>
        <source>EV_AP_GUI_INTERNAL_ERROR_REQ_REBOOT</source>
        <translation>Внутренняя ошибка
Перезапустите терминал</translation>
    </message>
    <message>
        <source>EV_AP_GUI_MODEM_IN_USE</source>
        <translation>Внешний модем используется</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_INITIALIZING</source>
        <translation>Инициализация
Подождите</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_REBOOTING</source>
        <translation>Перезапуск
Подождите</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_SHUTTING_DOWN</source>
        <translation>Выключение
Подождите</translation>
    </message>
    <message>
        <source>EV_NETMGR_SIMCARD_ERR</source>
        <translation>Модем: ошибка SIM-карты
Проверьте SIM-карту модема</translation>
    </message>
    <message>
        <source>EV_NETMGR_MODEM_ERR</source>
        <translation>Ошибка модема
Переподключите модем</translation>
    </message>
    <message>
        <source>EV_NETMGR_MODEM_UNSUPPORTED</source>
        <translation>Модем не поддерживается
Используйте другой модем</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_REDUCED_PERF</source>
        <translation>Перегрев: работа замедлена
Дайте терминалу остыть</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_USB</source>
        <translation>Перегрев: USB выключен
Дайте терминалу остыть</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_USB_EXT</source>
        <translation>Перегрев: внеш. USB выключен
Дайте терминалу остыть</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_LIMIT_BACKGR</source>
        <translation>Перегрев: передача замедлена
Дайте терминалу остыть</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_CLOSE_CONN</source>
        <translation>Перегрев: передача прервана
Дайте терминалу остыть</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_CLOSE_TERM</source>
        <translation>Перегрев: выключение
Дайте терминалу остыть</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_LOW</source>
        <translation>Низкая температура
Дайте терминалу прогреться</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_POE</source>
        <translation>Перегрев: PoE выключено
Дайте терминалу остыть</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ON</source>
        <translation>Обновление ПО
Не выключайте</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ON_BATTERY_LOW</source>
        <translation>Обновление ПО, низкий заряд
Подключите питание</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_PREPARING_START</source>
        <translation>Подготовка обновления ПО
Не выключайте</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SWPK_FILE_OPEN_ERROR</source>
        <translation>Обновление: файл не читается
Загрузите файл снова</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_BATTERY_LOW</source>
        <translation>ПО отклонено: низкий заряд
Повторите, подключив питание</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_DOWNGRADE_PREVENTED</source>
        <translation>ПО отклонено: старая версия
Используйте версию новее</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_SWPK_INVALID</source>
        <translation>ПО отклонено: неверный файл
Нужен файл этого терминала</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_SWPK_CORRUPT</source>
        <translation>ПО отклонено: файл поврежден
Загрузите файл снова</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_START_FAILED</source>
        <translation>Обновление ПО не запущено
Повторите попытку</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ROLLED_BACK</source>
        <translation>Сбой обновления ПО
Восстановлена старая версия</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SW_INTEGRITY_ERROR</source>
        <translation>ПО повреждено
Обновите в веб-интерфейсе</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SW_INTEGRITY_ERROR_ANT</source>
        <translation>ПО антенны повреждено
Обновите в веб-интерфейсе</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_PREVIOUS_UPDATE_UNFINISHED</source>
        <translation>Прошлое обновл. не завершено
Перезапустите и повторите</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_RELEASE_ALREADY_ACTIVE</source>
        <translation>Обновление отклонено
Эта версия уже используется</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_GENERAL_ERROR</source>
        <translation>Сбой онлайн-обновления
Повторите позже</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_PDP_CONTEXT_FAILED</source>
        <translation>Обновление: нет соединения
Повторите позже</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_URL_CONNECT_FAILED</source>
        <translation>Сервер обновления недоступен
Повторите позже</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_TRANSFER_ERROR</source>
        <translation>Сбой передачи файла ПО
Повторите попытку</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_TRANSFER_TIMEOUT</source>
        <translation>Тайм-аут передачи файла ПО
Повторите попытку</translation>
    </message>
    <message>
        <source>EV_PSU_CALIBRATION_ERROR</source>
        <translation>Ошибка калибровки питания
Обратитесь в поддержку</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_LOW</source>
        <translation>Низкий заряд батареи
Подключите питание</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_TEMP_LOW</source>
        <translation>Батарея слишком холодная
Дайте батарее прогреться</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_TEMP_HIGH</source>
        <translation>Перегрев батареи
Дайте батарее остыть</translation>
    </message>
    <message>
        <source>Operator Determined Barring</source>
        <translation>Запрет, установленный оператором</translation>
    </message>
    <message>
        <source>LLC or SNDCP failure</source>
        <translation>Сбой LLC или SNDCP</translation>
    </message>
    <message>
        <source>Insufficient resources</source>
        <translation>Недостаточно ресурсов</translation>
    </message>
    <message>
        <source>Missing or unknown APN</source>
        <translation>APN отсутствует или неизвестен</translation>
    </message>
    <message>
        <source>Unknown PDP address or PDP type</source>
        <translation>Неизвестный адрес или тип PDP</translation>
    </message>
    <message>
        <source>User authentication failed</source>
        <translation>Сбой аутентификации пользователя</translation>
    </message>
    <message>
        <source>Activation rejected by GGSN</source>
        <translation>Активация отклонена GGSN</translation>
    </message>
    <message>
        <source>Activation rejected, unspecified</source>
        <translation>Активация отклонена, без уточнения</translation>
    </message>
    <message>
        <source>Service option not supported</source>
        <translation>Опция услуги не поддерживается</translation>
    </message>
    <message>
        <source>Requested service option not subscribed</source>
        <translation>Запрошенная опция услуги не подключена</translation>
    </message>
    <message>
        <source>Service option temporarily out of order</source>
        <translation>Опция услуги временно не работает</translation>
    </message>
    <message>
        <source>NSAPI already used</source>
        <translation>NSAPI уже используется</translation>
    </message>
    <message>
        <source>Normal deactivation</source>
        <translation>Штатная деактивация</translation>
    </message>
    <message>
        <source>QoS not accepted</source>
        <translation>QoS не принято</translation>
    </message>
    <message>
        <source>Activation rejected, Network failure</source>
        <translation>Активация отклонена, сбой сети</translation>
    </message>
    <message>
        <source>Reactivation required</source>
        <translation>Требуется повторная активация</translation>
    </message>
    <message>
        <source>Feature not supported</source>
        <translation>Функция не поддерживается</translation>
    </message>
    <message>
        <source>Semantic error in the TFT operation</source>
        <translation>Семантическая ошибка операции TFT</translation>
    </message>
    <message>
        <source>Syntactical error in the TFT operation</source>
        <translation>Синтаксическая ошибка операции TFT</translation>
    </message>
    <message>
        <source>Unknown PDP context</source>
        <translation>Неизвестный контекст PDP</translation>
    </message>
    <message>
        <source>Semantic errors in packet filter(s)</source>
        <translation>Семантические ошибки фильтра(ов) пакетов</translation>
    </message>
    <message>
        <source>Syntactical errors in packet filter(s)</source>
        <translation>Синтаксические ошибки фильтра(ов) пакетов</translation>
    </message>
    <message>
        <source>PDP context without TFT already activated</source>
        <translation>Контекст PDP без TFT уже активирован</translation>
    </message>
    <message>
        <source>Reject, detaching</source>
        <translation>Отказ, отсоединение</translation>
    </message>
    <message>
        <source>PS attach rejected</source>
        <translation>Присоединение PS отклонено</translation>
    </message>
    <message>
        <source>Activation error, invalid</source>
        <translation>Ошибка активации, недопустимо</translation>
    </message>
    <message>
        <source>Re-activation timeout</source>
        <translation>Тайм-аут повторной активации</translation>
    </message>
    <message>
        <source>Attach reject, timeout</source>
        <translation>Отказ в присоединении,
тайм-аут</translation>
    </message>
    <message>
        <source>Normal deactivation (from Core Network)</source>
        <translation>Штатная деактивация (опорной сетью)</translation>
    </message>
    <message>
        <source>Normal deactivation (power down or reboot)</source>
        <translation>Штатная деактивация (выключение или перезапуск)</translation>
    </message>
    <message>
        <source>Normal deactivation (PDP context removed)</source>
        <translation>Штатная деактивация (контекст PDP удален)</translation>
    </message>
    <message>
        <source>Normal deactivation (AT command)</source>
        <translation>Штатная деактивация (команда AT)</translation>
    </message>
    <message>
        <source>Reject, unspecified</source>
        <translation>Отказ, без уточнения</translation>
    </message>
    <message>
        <source>Reject, reattach required</source>
        <translation>Отказ, требуется повторное присоединение</translation>
    </message>
    <message>
        <source>Connection timeout</source>
        <translation>Тайм-аут соединения</translation>
    </message>
    <message>
        <source>Reject, authentication failure</source>
        <translation>Отказ, сбой аутентификации</translation>
    </message>
    <message>
        <source>Reject, network invalid</source>
        <translation>Отказ, недопустимая сеть</translation>
    </message>
    <message>
        <source>Attach Reject, not allowed</source>
        <translation>Отказ в присоединении, не разрешено</translation>
    </message>
    <message>
        <source>Reject, normal detach</source>
        <translation>Отказ, штатное отсоединение</translation>
    </message>
    <message>
        <source>Attach reject, no IMSI</source>
        <translation>Отказ в присоединении, нет IMSI</translation>
    </message>
    <message>
        <source>Attach reject, Service request denied</source>
        <translation>Отказ в присоединении, запрос услуги отклонен</translation>
    </message>
    <message>
        <source>Attach reject, searching for PLMN</source>
        <translation>Отказ в присоединении, поиск PLMN</translation>
    </message>
    <message>
        <source>Establish Reject, normal</source>
        <translation>Отказ в установлении, штатный</translation>
    </message>
    <message>
        <source>Establish Reject, Radio Network failure</source>
        <translation>Отказ в установлении, сбой радиосети</translation>
    </message>
    <message>
        <source>Establish Reject, congestion</source>
        <translation>Отказ в установлении, перегрузка</translation>
    </message>
    <message>
        <source>Establish Reject, unsupported IAI version</source>
        <translation>Отказ в установлении, версия IAI не поддерживается</translation>
    </message>
    <message>
        <source>Establish Reject, unsupported UE class</source>
        <translation>Отказ в установлении, класс UE не поддерживается</translation>
    </message>
    <message>
        <source>Establish Reject, USIM required</source>
        <translation>Отказ в установлении, требуется USIM</translation>
    </message>
    <message>
        <source>Establish Reject, physical channel failure</source>
        <translation>Отказ в установлении, сбой физического канала</translation>
    </message>
    <message>
        <source>Establish Reject, access Class not allowed</source>
        <translation>Отказ в установлении, класс доступа не разрешен</translation>
    </message>
    <message>
        <source>Establish Reject, unspecified</source>
        <translation>Отказ в установлении, без уточнения</translation>
    </message>
    <message>
        <source>Conn. release, normal</source>
        <translation>Разъединение, штатное</translation>
    </message>
    <message>
        <source>Conn. release, Radio Network security failure</source>
        <translation>Разъединение, сбой безопасности радиосети</translation>
    </message>
    <message>
        <source>Conn. release, physical channel failure</source>
        <translation>Разъединение, сбой физического канала</translation>
    </message>
    <message>
        <source>Conn. release, PLMN Search</source>
        <translation>Разъединение, поиск PLMN</translation>
    </message>
    <message>
        <source>Conn. release, security command failure</source>
        <translation>Разъединение, сбой команды безопасности</translation>
    </message>
    <message>
        <source>Deregister, unknown cause</source>
        <translation>Дерегистрация, причина неизвестна</translation>
    </message>
    <message>
        <source>Deregister, register with no complete</source>
        <translation>Дерегистрация, регистрация не завершена</translation>
    </message>
    <message>
        <source>Deregister, service area BARRED</source>
        <translation>Дерегистрация, зона обслуживания запрещена</translation>
    </message>
    <message>
        <source>Deregister, position required</source>
        <translation>Дерегистрация, требуются координаты</translation>
    </message>
    <message>
        <source>Deregister, Core Network reset</source>
        <translation>Дерегистрация, сброс опорной сети</translation>
    </message>
    <message>
        <source>Deregister, inactivity</source>
        <translation>Дерегистрация, нет активности</translation>
    </message>
    <message>
        <source>Deregister, position response not received</source>
        <translation>Дерегистрация, ответ с координатами не получен</translation>
    </message>
    <message>
        <source>Deregister, position age expired</source>
        <translation>Дерегистрация, координаты устарели</translation>
    </message>
    <message>
        <source>Deregister, decryption error</source>
        <translation>Дерегистрация, ошибка дешифрования</translation>
    </message>
    <message>
        <source>Deregister, user specified position not permitted</source>
        <translation>Дерегистрация, заданные пользователем координаты не разрешены</translation>
    </message>
    <message>
        <source>Deregister, Radio Network initiated Deregistration</source>
        <translation>Дерегистрация, по инициативе радиосети</translation>
    </message>
    <message>
        <source>Deregister, tracked SAT below minimum</source>
        <translation>Дерегистрация, отслеживаемых спутников меньше минимума</translation>
    </message>
    <message>
        <source>Deregister, Lease Group not available</source>
        <translation>Дерегистрация, группа аренды недоступна</translation>
    </message>
    <message>
        <source>Deregister, Lease Mode handover failed</source>
        <translation>Дерегистрация, сбой хэндовера режима аренды</translation>
    </message>
    <message>
        <source>Deregister, Radio Failure</source>
        <translation>Дерегистрация, сбой радиосвязи</translation>
    </message>
    <message>
        <source>Deregister, Unsupported UE subclass</source>
        <translation>Дерегистрация, подкласс UE не поддерживается</translation>
    </message>
    <message>
        <source>Deregister, Elevation too low</source>
        <translation>Дерегистрация, угол места слишком мал</translation>
    </message>
    <message>
        <source>Deregister, Protocol Failure</source>
        <translation>Дерегистрация, сбой протокола</translation>
    </message>
    <message>
        <source>Deregister, Invalid UE capabilities</source>
        <translation>Дерегистрация, недопустимые возможности UE</translation>
    </message>
    <message>
        <source>Network failure IMSI unknown (HLR)</source>
        <translation>Сбой сети, IMSI неизвестен (HLR)</translation>
    </message>
    <message>
        <source>Network failure, Mobile Station illegal</source>
        <translation>Сбой сети, нелегальная мобильная станция</translation>
    </message>
    <message>
        <source>Network failure, Mobile Equipment illegal</source>
        <translation>Сбой сети, нелегальное мобильное устройство</translation>
    </message>
    <message>
        <source>Attach reject, GPRS not allowed</source>
        <translation>Отказ в присоединении, GPRS не разрешен</translation>
    </message>
    <message>
        <source>Attach reject, services not allowed</source>
        <translation>Отказ в присоединении, услуги не разрешены</translation>
    </message>
    <message>
        <source>Network failure, Mobile station id unknown</source>
        <translation>Сбой сети, неизвестен идентификатор мобильной станции</translation>
    </message>
    <message>
        <source>Network failure, implicitly detached</source>
        <translation>Сбой сети, неявное отсоединение</translation>
    </message>
    <message>
        <source>Network failure, PLMN not allowed</source>
        <translation>Сбой сети, PLMN не разрешена</translation>
    </message>
    <message>
        <source>Network failure, Location area not allowed</source>
        <translation>Сбой сети, зона местоположения не разрешена</translation>
    </message>
    <message>
        <source>Network failure, roaming not allowed at location</source>
        <translation>Сбой сети, роуминг в этом месте не разрешен</translation>
    </message>
    <message>
        <source>Network failure, no GPRS service allowed</source>
        <translation>Сбой сети, услуги GPRS не разрешены</translation>
    </message>
    <message>
        <source>Network failure, no service at location</source>
        <translation>Сбой сети, нет обслуживания в этом месте</translation>
    </message>
    <message>
        <source>Network failure, service temporarily unreachable</source>
        <translation>Сбой сети, услуга временно недоступна</translation>
    </message>
    <message>
        <source>Network failure, PLMN failure</source>
        <translation>Сбой сети, сбой PLMN</translation>
    </message>
    <message>
        <source>Authentication reject, MAC failure</source>
        <translation>Отказ в аутентификации, сбой MAC</translation>
    </message>
    <message>
        <source>Authentication reject, sync failure</source>
        <translation>Отказ в аутентификации, сбой синхронизации</translation>
    </message>
    <message>
        <source>Network failure, congestion</source>
        <translation>Сбой сети, перегрузка</translation>
    </message>
    <message>
        <source>Authentication reject, GSM unacceptable</source>
        <translation>Отказ в аутентификации, GSM неприемлема</translation>
    </message>
    <message>
        <source>Network error, detached</source>
        <translation>Ошибка сети, отсоединение</translation>
    </message>
    <message>
        <source>Network error, invalid mandatory info</source>
        <translation>Ошибка сети, недопустимые обязательные данные</translation>
    </message>
    <message>
        <source>Network error, message invalid</source>
        <translation>Ошибка сети, недопустимое сообщение</translation>
    </message>
    <message>
        <source>Network error, protocol state error</source>
        <translation>Ошибка сети, ошибка состояния протокола</translation>
    </message>
    <message>
        <source>Network error, invalid conditional info</source>
        <translation>Ошибка сети, недопустимые условные данные</translation>
    </message>
    <message>
        <source>Network error, not compatible with protocol state</source>
        <translation>Ошибка сети, несовместимо с состоянием протокола</translation>
    </message>
    <message>
        <source>Network error, unspecified protocol error</source>
        <translation>Ошибка сети, ошибка протокола без уточнения</translation>
    </message>
    <message>
        <source>Attach reject, detaching</source>
        <translation>Отказ в присоединении, отсоединение</translation>
    </message>
    <message>
        <source>Attach reject, powerdown</source>
        <translation>Отказ в присоединении, выключение</translation>
    </message>
    <message>
        <source>Attach reject, domain blocked</source>
        <translation>Отказ в присоединении, домен заблокирован</translation>
    </message>
    <message>
        <source>Reject, missing PIN</source>
        <translation>Отказ, нет PIN</translation>
    </message>
    <message>
        <source>Reject, no selected PLMN</source>
        <translation>Отказ, PLMN не выбрана</translation>
    </message>
    <message>
        <source>Reject, PLMN forbidden</source>
        <translation>Отказ, PLMN запрещена</translation>
    </message>
    <message>
        <source>Reject, PLMN/GPRS not allowed</source>
        <translation>Отказ, PLMN/GPRS не разрешены</translation>
    </message>
    <message>
        <source> MB</source>
        <translation> МБ</translation>
    </message>
    <message>
        <source>Help desk not configured.
See User Manual.</source>
        <translation>Служба поддержки не настроена
См. руководство</translation>
    </message>
    <message>
        <source>Unit serial number: </source>
        <translation>Серийный номер терминала: </translation>
    </message>
    <message>
        <source>Unknown unit serial number</source>
        <translation>Серийный номер терминала неизвестен</translation>
    </message>
    <message>
        <source>Antenna serial number: </source>
        <translation>Серийный номер антенны: </translation>
    </message>
    <message>
        <source>Unknown antenna serial number</source>
        <translation>Серийный номер антенны неизвестен</translation>
    </message>
    <message>
        <source>IMEI: </source>
        <translation>IMEI: </translation>
    </message>
    <message>
        <source>Unknown IMEI</source>
        <translation>IMEI неизвестен</translation>
    </message>
    <message>
        <source>IP address: </source>
        <translation>IP-адрес: </translation>
    </message>
    <message>
        <source>Unknown MAC for LAN</source>
        <translation>MAC для LAN неизвестен</translation>
    </message>
    <message>
        <source>Enable LAN to be able to read MAC for LAN</source>
        <translation>Включите LAN, чтобы узнать MAC для LAN</translation>
    </message>
    <message>
        <source>Unknown MAC for WLAN</source>
        <translation>MAC для Wi-Fi неизвестен</translation>
    </message>
    <message>
        <source>Enable WLAN to be able to read MAC for WLAN</source>
        <translation>Включите Wi-Fi, чтобы узнать MAC для Wi-Fi</translation>
    </message>
    <message>
        <source>WLAN name: </source>
        <translation>Имя Wi-Fi: </translation>
    </message>
    <message>
        <source>(WLAN name hidden)</source>
        <translation>(имя Wi-Fi скрыто)</translation>
    </message>
    <message>
        <source>Software version: </source>
        <translation>Версия ПО: </translation>
    </message>
    <message>
        <source>Build number: </source>
        <translation>Номер сборки: </translation>
    </message>
    <message>
        <source>Idle</source>
        <translation>Ожидание</translation>
    </message>
    <message>
        <source>Charging</source>
        <translation>Заряд</translation>
    </message>
    <message>
        <source>Discharging</source>
        <translation>Разряд</translation>
    </message>
    <message>
        <source>Position acquired</source>
        <translation>Координаты определены</translation>
    </message>
    <message>
        <source>N</source>
        <translation>С</translation>
    </message>
    <message>
        <source>S</source>
        <translation>Ю</translation>
    </message>
    <message>
        <source>E</source>
        <translation>В</translation>
    </message>
    <message>
        <source>W</source>
        <translation>З</translation>
    </message>
    <message>
        <source>Precharging</source>
        <translation>Предзаряд</translation>
    </message>
    <message>
        <source>C</source>
        <translation>C</translation>
    </message>
    <message>
        <source>Battery error!</source>
        <translation>Ошибка батареи!</translation>
    </message>
    <message>
        <source>Remaining time %1:%2 h</source>
        <translation>Осталось %1:%2 ч</translation>
    </message>
    <message>
        <source>Remaining charge time %1:%2 h</source>
        <translation>До полного заряда %1:%2 ч</translation>
    </message>
    <message>
        <source>Estimating time...</source>
        <translation>Оценка времени…</translation>
    </message>
    <message>
        <source>Insert SIM</source>
        <translation>Вставьте SIM-карту</translation>
    </message>
    <message>
        <source>Initializing SIM</source>
        <translation>Инициализация SIM-карты</translation>
    </message>
    <message>
        <source>Enter PUK in web interface</source>
        <translation>Введите PUK
в веб-интерфейсе</translation>
    </message>
    <message>
        <source>Enter PIN?</source>
        <translation>Ввести PIN?</translation>
    </message>
    <message>
        <source>Point now?</source>
        <translation>Навести антенну?</translation>
    </message>
    <message>
        <source>SIM Lock does not
match inserted SIM</source>
        <translation>SIM-карта не подходит
под SIM-блокировку</translation>
    </message>
    <message>
        <source>Searching</source>
        <translation>Поиск</translation>
    </message>
    <message>
        <source>Registering</source>
        <translation>Регистрация</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Готов</translation>
    </message>
    <message>
        <source>External control</source>
        <translation>Внешнее управление</translation>
    </message>
    <message>
        <source>Bonding slave mode</source>
        <translation>Объединение каналов:
режим ведомого</translation>
    </message>
    <message>
        <source>HDR Half Asymmetric</source>
        <translation>HDR Half Asym</translation>
    </message>
    <message>
        <source>HDR Half Symmetric</source>
        <translation>HDR Half Sym</translation>
    </message>
    <message>
        <source>BGAN X-Stream</source>
        <translation>BGAN X-Stream</translation>
    </message>
    <message>
        <source>HDR Full Asymmetric</source>
        <translation>HDR Full Asym</translation>
    </message>
    <message>
        <source>HDR Full Symmetric</source>
        <translation>HDR Full Sym</translation>
    </message>
    <message>
        <source>2xHDR Full Asymmetric</source>
        <translation>2xHDR FullAsym</translation>
    </message>
    <message>
        <source>2xHDR Full Symmetric</source>
        <translation>2xHDR FullSym</translation>
    </message>
    <message>
        <source>Standard data: </source>
        <translation>Станд. данные: </translation>
    </message>
    <message>
        <source>Unknown connection</source>
        <translation>Неизв. соед.</translation>
    </message>
</context>
</TS>
