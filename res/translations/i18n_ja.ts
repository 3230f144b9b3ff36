<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>ScreenAntenna</name>
    <message>
        <source>BGAN signal: </source>
        <translation>BGAN信号：</translation>
    </message>
    <message>
        <source>Acquiring position: </source>
        <translation>測位中：</translation>
    </message>
    <message>
        <source>Position: </source>
        <translation>位置：</translation>
    </message>
</context>
<context>
    <name>ScreenBattery</name>
    <message>
        <source>No battery connected</source>
        <translation>バッテリー未接続</translation>
    </message>
    <message>
        <source>Int</source>
        <translation>内蔵</translation>
    </message>
    <message>
        <source>Ext</source>
        <translation>外付</translation>
    </message>
    <message>
        <source>Temp: </source>
        <translation>温度：</translation>
    </message>
</context>
<context>
    <name>ScreenEnterPin</name>
    <message>
        <source>Enter PIN: </source>
        <translation>PINを入力：</translation>
    </message>
</context>
<context>
    <name>ScreenMenu</name>
    <message>
        <source>CONFORMITY_TEXT</source>
        <translation>製造者は、本無線機器が指令2014/53/EUに適合していることをここに宣言します。EU適合宣言書の全文は取扱説明書に記載されています。</translation>
    </message>
    <message>
        <source>Point now</source>
        <translation>方向調整を開始</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>画面</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>明るさ</translation>
    </message>
    <message>
        <source>Level 1</source>
        <translation>レベル1</translation>
    </message>
    <message>
        <source>Level 2</source>
        <translation>レベル2</translation>
    </message>
    <message>
        <source>Level 3</source>
        <translation>レベル3</translation>
    </message>
    <message>
        <source>Level 4</source>
        <translation>レベル4</translation>
    </message>
    <message>
        <source>Level 5</source>
        <translation>レベル5</translation>
    </message>
    <message>
        <source>Level 6</source>
        <translation>レベル6</translation>
    </message>
    <message>
        <source>Level 7</source>
        <translation>レベル7</translation>
    </message>
    <message>
        <source>5 seconds</source>
        <translation>5秒</translation>
    </message>
    <message>
        <source>30 seconds</source>
        <translation>30秒</translation>
    </message>
    <message>
        <source>1 minute</source>
        <translation>1分</translation>
    </message>
    <message>
        <source>2 minutes</source>
        <translation>2分</translation>
    </message>
    <message>
        <source>5 minutes</source>
        <translation>5分</translation>
    </message>
    <message>
        <source>Audio indication</source>
        <translation>音の通知</translation>
    </message>
    <message>
        <source>Pointing</source>
        <translation>方向調整</translation>
    </message>
    <message>
        <source>On</source>
        <translation>オン</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>オフ</translation>
    </message>
    <message>
        <source>Power-up mode</source>
        <translation>起動モード</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>自動</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>手動</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>言語</translation>
    </message>
    <message>
        <source>Properties</source>
        <translation>プロパティ</translation>
    </message>
    <message>
        <source>IP address</source>
        <translation>IPアドレス</translation>
    </message>
    <message>
        <source>Hardware</source>
        <translation>ハードウェア</translation>
    </message>
    <message>
        <source>Unit serial number</source>
        <translation>本体シリアル番号</translation>
    </message>
    <message>
        <source>Antenna serial number</source>
        <translation>アンテナシリアル番号</translation>
    </message>
    <message>
        <source>LAN</source>
        <translation>LAN</translation>
    </message>
    <message>
        <source>WLAN</source>
        <translation>無線LAN</translation>
    </message>
    <message>
        <source>Software</source>
        <translation>ソフトウェア</translation>
    </message>
    <message>
        <source>Conformity</source>
        <translation>適合性</translation>
    </message>
    <message>
        <source>IMEI</source>
        <translation>IMEI</translation>
    </message>
    <message>
        <source>Help desk</source>
        <translation>サポート窓口</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>アラート</translation>
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
        <translation>サービス制限</translation>
    </message>
    <message>
        <source>RM_EV_BDU_USIM_REJECTED</source>
        <translation>SIM拒否</translation>
    </message>
    <message>
        <source>Timeout</source>
        <translation>タイムアウト</translation>
    </message>
    <message>
        <source> kB</source>
        <translation> kB</translation>
    </message>
    <message>
        <source>MAC: </source>
        <translation>MAC：</translation>
    </message>
    <message>
        <source>Initializing</source>
        <translation>初期化中</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>接続中…</translation>
    </message>
    <message>
        <source> kbps</source>
        <translation> kbps</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>開始</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
</context>
<context>
    <name>StatusUpdater</name>
    <message>
        <source>RM_EV_INFOLVL_INFO</source>
        <translation>情報</translation>
    </message>
    <message>
        <source>EV_ALARM_SIM_MODULE</source>
        <translation>SIMリーダー故障
サポート窓口に連絡</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMP_SENSOR</source>
        <translation>温度センサー故障
サポート窓口に連絡</translation>
    </message>
    <message>
        <source>EV_ALARM_GPS_MODULE</source>
        <translation>GPS受信機故障
サポート窓口に連絡</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_NOT_PRESENT</source>
        <translation>アンテナ未接続
アンテナケーブルを確認</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_LOW_CRITICAL</source>
        <translation>温度が危険域まで低下
端末を温めること</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_TOO_LOW</source>
        <translation>温度が許容範囲より低い
端末を温めること</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_HIGH_CRITICAL</source>
        <translation>温度が危険域まで上昇
端末を冷やすこと</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_TOO_HIGH</source>
        <translation>温度が許容範囲より高い
端末を冷やすこと</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_SATELLITE_SIGNAL_LOST</source>
        <translation>衛星信号断
見通しを確保し再度方向調整</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_CS_REGISTER_FAILED</source>
        <translation>音声(CS)登録失敗
契約を確認</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_PS_REGISTER_FAILED</source>
        <translation>データ(PS)登録失敗
契約を確認</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_FAILURE</source>
        <translation>アンテナ故障
サポート窓口に連絡</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_ERRORLOG_FLASH_FULL</source>
        <translation>エラーログ用メモリ満杯
サポート窓口に連絡</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_INVALID_NETWORK</source>
        <translation>無効なネットワーク
SIMカードと契約を確認</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_CABLE_CALIBRATION</source>
        <translation>ケーブル校正失敗
アンテナケーブルを確認</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_DSP_ERROR</source>
        <translation>信号処理装置(DSP)エラー
端末を再起動</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_SW_UPDATE_FAILURE</source>
        <translation>アンテナソフトウェア更新失敗
端末を再起動</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_SW_UPDATE_PROBLEM</source>
        <translation>アンテナソフトウェア更新異常
端末を再起動</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_IMAGE_LOAD_FAILURE</source>
        <translation>アンテナソフトウェア読込失敗
端末を再起動</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_ENTER_MAIN_FAIL</source>
        <translation>アンテナ起動不可
端末を再起動</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_HPA_COMM_FAIL</source>
        <translation>アンテナHPAと通信不可
アンテナケーブルを確認</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_REGISTER_REJ</source>
        <translation>ネットワークが登録を拒否
契約を確認</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_DEREGISTER_COM</source>
        <translation>ネットワークによる登録解除</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_DEREGISTER</source>
        <translation>ネットワークから登録解除</translation>
    </message>
    <message>
        <source>RM_EV_BDU_FLASH_WRITE_LIMIT</source>
        <translation>フラッシュメモリ書込上限到達
サポート窓口に連絡</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_STARTUP_TEMP_TOO_LOW</source>
        <translation>アンテナ低温で起動不可
アンテナを温めること</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_STARTUP_TIMEOUT</source>
        <translation>アンテナ起動タイムアウト
ケーブルを確認し端末を再起動</translation>
    </message>
    <message>
        <source>RM_EV_BDU_TEMP_POE_SHUTDOWN</source>
        <translation>高温：PoE停止
端末を冷やすこと</translation>
    </message>
    <message>
        <source>RM_EV_BDU_TEMP_REDUCE_DATA</source>
        <translation>高温：データ速度低下
端末を冷やすこと</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_ILLEGAL_COMBINATION</source>
        <translation>アンテナが端末に不適合
対応アンテナを使用</translation>
    </message>
    <message>
        <source>RM_EV_BDU_SATELLITE_NOT_VISIBLE</source>
        <translation>衛星が見えない
見通しのよい場所に移動</translation>
    </message>
    <message>
        <source>RM_EV_BDU_USIM_MISSING</source>
        <translation>SIMカードなし
SIMカードを挿入</translation>
    </message>
    <message>
        <source>RM_EV_BDU_NAT_TABLE_FULL</source>
        <translation>NATテーブル満杯
接続数を削減</translation>
    </message>
    <message>
        <source>EV_BDU_BP_ANTENNA_HOTSWAP_FAILURE</source>
        <translation>通電中のアンテナ交換
端末を再起動</translation>
    </message>
    <message>
        <source>EV_BDU_BP_HPA_DC_RESISTOR_LOSS</source>
        <translation>アンテナケーブル抵抗値過大
アンテナケーブルを確認</translation>
    </message>
    <message>
        <source>EV_BDU_BP_ALIVE_ABSENT</source>
        <translation>アンテナ応答なし
ケーブルを確認し端末を再起動</translation>
    </message>
    <message>
        <source>EV_BDU_BP_CAPABILITY_CHECK_FAILURE</source>
        <translation>アンテナ能力確認失敗
対応アンテナを使用</translation>
    </message>
    <message>
        <source>EV_BDU_BP_STARTUP_DONE_FAILURE</source>
        <translation>アンテナ起動未完了
端末を再起動</translation>
    </message>
    <message>
        <source>EV_HPA_CM_VOLTAGE</source>
        <translation>HPA電圧が範囲外
アンテナケーブルを確認</translation>
    </message>
    <message>
        <source>EV_HPA_CM_TEMP_RANGE</source>
        <translation>HPA温度が範囲外
アンテナを高温・低温から保護</translation>
    </message>
    <message>
        <source>EV_HPA_CM_TXRX_GAIN_RANGE</source>
        <translation>HPA利得が範囲外(TX/RX)
サポート窓口に連絡</translation>
    </message>
    <message>
        <source>EV_HPA_CM_UNEXPECTED_VOLTAGE</source>
        <translation>HPA電圧が想定外
アンテナケーブルを確認</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NO_BUNDLES_DEFINED</source>
        <translation>データ接続が未定義
Web画面で追加</translation>
    </message>
    <message>
        <source>EV_AP_GUI_VALIDATING_PIN</source>
        <translation>PIN確認中
お待ちください</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CIPHERING_OFF</source>
        <translation>暗号化オフ
通話とデータの保護なし</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SEARCHING_FOR_MODEM</source>
        <translation>外部モデム検索中
モデムの接続を確認</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_LIMIT_EXCEEDED</source>
        <translation>データ接続数が上限を超過
1つ停止して再試行</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_AUTO_ACT_FAILED</source>
        <translation>自動接続失敗
手動で接続を開始</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_FAILED</source>
        <translation>接続失敗
再試行</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_LOST</source>
        <translation>接続断
接続を再度開始</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NETWORK_FAILURE</source>
        <translation>ネットワーク障害
後で再試行</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NETWORK_FAILURE_RETRY</source>
        <translation>ネットワーク障害
自動で再試行中</translation>
    </message>
    <message>
        <source>EV_AP_GUI_LAN_DISCONNECTED</source>
        <translation>LAN切断
LANケーブルを確認</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NOT_ALL_ACTIVATED</source>
        <translation>一部の接続が未開始
停止後に再度開始</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_UNKNOWN</source>
        <translation>接続失敗：原因不明
再試行</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SW_UPDATE_ANTENNA</source>
        <translation>アンテナソフトウェア更新中
電源を切らないこと</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_CLOSED_REASON_LINK_MON_RECONNECT</source>
        <translation>リンク監視により切断
自動で再接続中</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SELECT_NETWORK_ON_WEB</source>
        <translation>ネットワーク未選択
Web画面で選択</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STARTING_BUNDLE_NAME</source>
        <translation>開始中：
</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NOT_REGISTERED_TO_NETWORK</source>
        <translation>ネットワークに未登録
「準備完了」になるまで待機</translation>
    </message>
    <message>
        <source>EV_AP_GUI_WRONG_PIN</source>
        <translation>PIN誤り
再試行</translation>
    </message>
    <message>
        <source>No alerts</source>
        <translation>アラートなし</translation>
    </message>
    <message>
        <source>EV_AP_GUI_DHCP_CLIENT_WITHOUT_BONDING</source>
        <translation>非ボンディングDHCPクライアント
Web画面で変更</translation>
    </message>
    <message>
        <source>EV_AP_GUI_INTERNAL_ERROR_REQ_REBOOT</source>
        <translation>内部エラー
端末を再起動</translation>
    </message>
    <message>
        <source>EV_AP_GUI_MODEM_IN_USE</source>
        <translation>外部モデム使用中</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_INITIALIZING</source>
        <translation>初期化中
お待ちください</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_REBOOTING</source>
        <translation>再起動中
お待ちください</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_SHUTTING_DOWN</source>
        <translation>電源オフ処理中
お待ちください</translation>
    </message>
    <message>
        <source>EV_NETMGR_SIMCARD_ERR</source>
        <translation>モデム：SIMカードエラー
モデムのSIMカードを確認</translation>
    </message>
    <message>
        <source>EV_NETMGR_MODEM_ERR</source>
        <translation>モデムエラー
モデムを再接続</translation>
    </message>
    <message>
        <source>EV_NETMGR_MODEM_UNSUPPORTED</source>
        <translation>モデム非対応
別のモデムを使用</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_REDUCED_PERF</source>
        <translation>高温：動作低速化
端末を冷やすこと</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_USB</source>
        <translation>高温：USB停止
端末を冷やすこと</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_USB_EXT</source>
        <translation>高温：外部USBオフ
端末を冷やすこと</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_LIMIT_BACKGR</source>
        <translation>高温：データ低速化
端末を冷やすこと</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_CLOSE_CONN</source>
        <translation>高温：データ停止
端末を冷やすこと</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_CLOSE_TERM</source>
        <translation>高温：電源オフ処理中
端末を冷やすこと</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_LOW</source>
        <translation>低温
端末を温めること</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_POE</source>
        <translation>高温：PoEオフ
端末を冷やすこと</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ON</source>
        <translation>ソフトウェア更新中
電源を切らないこと</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ON_BATTERY_LOW</source>
        <translation>更新中：バッテリー残量低下
電源を接続</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_PREPARING_START</source>
        <translation>ソフトウェア更新準備中
電源を切らないこと</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SWPK_FILE_OPEN_ERROR</source>
        <translation>更新失敗：ファイル読込不可
ファイルを再アップロード</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_BATTERY_LOW</source>
        <translation>更新拒否：バッテリー残量低下
電源を接続して再試行</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_DOWNGRADE_PREVENTED</source>
        <translation>更新拒否：旧版
新しい版を使用</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_SWPK_INVALID</source>
        <translation>更新拒否：無効なファイル
この端末用のファイルを使用</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_SWPK_CORRUPT</source>
        <translation>更新拒否：ファイル破損
ファイルを再アップロード</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_START_FAILED</source>
        <translation>ソフトウェア更新未開始
再試行</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ROLLED_BACK</source>
        <translation>ソフトウェア更新失敗
旧版に復元済み</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SW_INTEGRITY_ERROR</source>
        <translation>ソフトウェア破損
Web画面で更新</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SW_INTEGRITY_ERROR_ANT</source>
        <translation>アンテナソフトウェア破損
Web画面で更新</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_PREVIOUS_UPDATE_UNFINISHED</source>
        <translation>前回の更新が未完了
端末を再起動して再試行</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_RELEASE_ALREADY_ACTIVE</source>
        <translation>更新拒否
この版はすでに使用中</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_GENERAL_ERROR</source>
        <translation>オンライン更新失敗
後で再試行</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_PDP_CONTEXT_FAILED</source>
        <translation>オンライン更新：データ未接続
後で再試行</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_URL_CONNECT_FAILED</source>
        <translation>オンライン更新：サーバー不通
後で再試行</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_TRANSFER_ERROR</source>
        <translation>更新ファイル転送失敗
再試行</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_TRANSFER_TIMEOUT</source>
        <translation>更新ファイル転送タイムアウト
再試行</translation>
    </message>
    <message>
        <source>EV_PSU_CALIBRATION_ERROR</source>
        <translation>電源校正エラー
サポート窓口に連絡</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_LOW</source>
        <translation>バッテリー残量低下
電源を接続</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_TEMP_LOW</source>
        <translation>バッテリー低温
バッテリーを温めること</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_TEMP_HIGH</source>
        <translation>バッテリー高温
バッテリーを冷やすこと</translation>
    </message>
    <message>
        <source>Operator Determined Barring</source>
        <translation>通信事業者による規制</translation>
    </message>
    <message>
        <source>LLC or SNDCP failure</source>
        <translation>LLCまたはSNDCP障害</translation>
    </message>
    <message>
        <source>Insufficient resources</source>
        <translation>リソース不足</translation>
    </message>
    <message>
        <source>Missing or unknown APN</source>
        <translation>APNなし、または不明</translation>
    </message>
    <message>
        <source>Unknown PDP address or PDP type</source>
        <translation>不明なPDPアドレスまたは
PDPタイプ</translation>
    </message>
    <message>
        <source>User authentication failed</source>
        <translation>ユーザー認証失敗</translation>
    </message>
    <message>
        <source>Activation rejected by GGSN</source>
        <translation>GGSNによる有効化拒否</translation>
    </message>
    <message>
        <source>Activation rejected, unspecified</source>
        <translation>有効化拒否、原因未指定</translation>
    </message>
    <message>
        <source>Service option not supported</source>
        <translation>サービスオプション非対応</translation>
    </message>
    <message>
        <source>Requested service option not subscribed</source>
        <translation>要求したサービスオプションが
未契約</translation>
    </message>
    <message>
        <source>Service option temporarily out of order</source>
        <translation>サービスオプションが
一時的に利用不可</translation>
    </message>
    <message>
        <source>NSAPI already used</source>
        <translation>NSAPIはすでに使用中</translation>
    </message>
    <message>
        <source>Normal deactivation</source>
        <translation>正常な無効化</translation>
    </message>
    <message>
        <source>QoS not accepted</source>
        <translation>QoS受理不可</translation>
    </message>
    <message>
        <source>Activation rejected, Network failure</source>
        <translation>有効化拒否、ネットワーク障害</translation>
    </message>
    <message>
        <source>Reactivation required</source>
        <translation>再有効化が必要</translation>
    </message>
    <message>
        <source>Feature not supported</source>
        <translation>機能非対応</translation>
    </message>
    <message>
        <source>Semantic error in the TFT operation</source>
        <translation>TFT操作の意味エラー</translation>
    </message>
    <message>
        <source>Syntactical error in the TFT operation</source>
        <translation>TFT操作の構文エラー</translation>
    </message>
    <message>
        <source>Unknown PDP context</source>
        <translation>不明なPDPコンテキスト</translation>
    </message>
    <message>
        <source>Semantic errors in packet filter(s)</source>
        <translation>パケットフィルタの意味エラー</translation>
    </message>
    <message>
        <source>Syntactical errors in packet filter(s)</source>
        <translation>パケットフィルタの構文エラー</translation>
    </message>
    <message>
        <source>PDP context without TFT already activated</source>
        <translation>TFTなしPDPコンテキストは
有効化済み</translation>
    </message>
    <message>
        <source>Reject, detaching</source>
        <translation>拒否、デタッチ中</translation>
    </message>
    <message>
        <source>PS attach rejected</source>
        <translation>PSアタッチ拒否</translation>
    </message>
    <message>
        <source>Activation error, invalid</source>
        <translation>有効化エラー、内容が無効</translation>
    </message>
    <message>
        <source>Re-activation timeout</source>
        <translation>再有効化タイムアウト</translation>
    </message>
    <message>
        <source>Attach reject, timeout</source>
        <translation>アタッチ拒否、タイムアウト</translation>
    </message>
    <message>
        <source>Normal deactivation (from Core Network)</source>
        <translation>正常な無効化(コア網から)</translation>
    </message>
    <message>
        <source>Normal deactivation (power down or reboot)</source>
        <translation>正常な無効化
(電源オフまたは再起動)</translation>
    </message>
    <message>
        <source>Normal deactivation (PDP context removed)</source>
        <translation>正常な無効化
(PDPコンテキスト削除)</translation>
    </message>
    <message>
        <source>Normal deactivation (AT command)</source>
        <translation>正常な無効化(ATコマンド)</translation>
    </message>
    <message>
        <source>Reject, unspecified</source>
        <translation>拒否、原因未指定</translation>
    </message>
    <message>
        <source>Reject, reattach required</source>
        <translation>拒否、再アタッチが必要</translation>
    </message>
    <message>
        <source>Connection timeout</source>
        <translation>接続タイムアウト</translation>
    </message>
    <message>
        <source>Reject, authentication failure</source>
        <translation>拒否、認証失敗</translation>
    </message>
    <message>
        <source>Reject, network invalid</source>
        <translation>拒否、無効なネットワーク</translation>
    </message>
    <message>
        <source>Attach Reject, not allowed</source>
        <translation>アタッチ拒否、不許可</translation>
    </message>
    <message>
        <source>Reject, normal detach</source>
        <translation>拒否、正常なデタッチ</translation>
    </message>
    <message>
        <source>Attach reject, no IMSI</source>
        <translation>アタッチ拒否、IMSIなし</translation>
    </message>
    <message>
        <source>Attach reject, Service request denied</source>
        <translation>アタッチ拒否、サービス要求拒否</translation>
    </message>
    <message>
        <source>Attach reject, searching for PLMN</source>
        <translation>アタッチ拒否、PLMN検索中</translation>
    </message>
    <message>
        <source>Establish Reject, normal</source>
        <translation>確立拒否、正常</translation>
    </message>
    <message>
        <source>Establish Reject, Radio Network failure</source>
        <translation>確立拒否、無線網障害</translation>
    </message>
    <message>
        <source>Establish Reject, congestion</source>
        <translation>確立拒否、輻輳</translation>
    </message>
    <message>
        <source>Establish Reject, unsupported IAI version</source>
        <translation>確立拒否、IAI版非対応</translation>
    </message>
    <message>
        <source>Establish Reject, unsupported UE class</source>
        <translation>確立拒否、UEクラス非対応</translation>
    </message>
    <message>
        <source>Establish Reject, USIM required</source>
        <translation>確立拒否、USIMが必要</translation>
    </message>
    <message>
        <source>Establish Reject, physical channel failure</source>
        <translation>確立拒否、物理チャネル障害</translation>
    </message>
    <message>
        <source>Establish Reject, access Class not allowed</source>
        <translation>確立拒否、アクセスクラス不許可</translation>
    </message>
    <message>
        <source>Establish Reject, unspecified</source>
        <translation>確立拒否、原因未指定</translation>
    </message>
    <message>
        <source>Conn. release, normal</source>
        <translation>接続解放、正常</translation>
    </message>
    <message>
        <source>Conn. release, Radio Network security failure</source>
        <translation>接続解放、
無線網セキュリティ障害</translation>
    </message>
    <message>
        <source>Conn. release, physical channel failure</source>
        <translation>接続解放、物理チャネル障害</translation>
    </message>
    <message>
        <source>Conn. release, PLMN Search</source>
        <translation>接続解放、PLMN検索</translation>
    </message>
    <message>
        <source>Conn. release, security command failure</source>
        <translation>接続解放、
セキュリティコマンド失敗</translation>
    </message>
    <message>
        <source>Deregister, unknown cause</source>
        <translation>登録解除、原因不明</translation>
    </message>
    <message>
        <source>Deregister, register with no complete</source>
        <translation>登録解除、登録完了なし</translation>
    </message>
    <message>
        <source>Deregister, service area BARRED</source>
        <translation>登録解除、サービスエリア規制中</translation>
    </message>
    <message>
        <source>Deregister, position required</source>
        <translation>登録解除、位置が必要</translation>
    </message>
    <message>
        <source>Deregister, Core Network reset</source>
        <translation>登録解除、コア網リセット</translation>
    </message>
    <message>
        <source>Deregister, inactivity</source>
        <translation>登録解除、無通信</translation>
    </message>
    <message>
        <source>Deregister, position response not received</source>
        <translation>登録解除、位置応答の受信なし</translation>
    </message>
    <message>
        <source>Deregister, position age expired</source>
        <translation>登録解除、位置の有効期限切れ</translation>
    </message>
    <message>
        <source>Deregister, decryption error</source>
        <translation>登録解除、復号エラー</translation>
    </message>
    <message>
        <source>Deregister, user specified position not permitted</source>
        <translation>登録解除、
ユーザー指定位置は不許可</translation>
    </message>
    <message>
        <source>Deregister, Radio Network initiated Deregistration</source>
        <translation>登録解除、無線網による登録解除</translation>
    </message>
    <message>
        <source>Deregister, tracked SAT below minimum</source>
        <translation>登録解除、追尾衛星が最小値未満</translation>
    </message>
    <message>
        <source>Deregister, Lease Group not available</source>
        <translation>登録解除、
リースグループ利用不可</translation>
    </message>
    <message>
        <source>Deregister, Lease Mode handover failed</source>
        <translation>登録解除、リースモードの
ハンドオーバー失敗</translation>
    </message>
    <message>
        <source>Deregister, Radio Failure</source>
        <translation>登録解除、無線障害</translation>
    </message>
    <message>
        <source>Deregister, Unsupported UE subclass</source>
        <translation>登録解除、UEサブクラス非対応</translation>
    </message>
    <message>
        <source>Deregister, Elevation too low</source>
        <translation>登録解除、仰角不足</translation>
    </message>
    <message>
        <source>Deregister, Protocol Failure</source>
        <translation>登録解除、プロトコル障害</translation>
    </message>
    <message>
        <source>Deregister, Invalid UE capabilities</source>
        <translation>登録解除、無効なUE能力</translation>
    </message>
    <message>
        <source>Network failure IMSI unknown (HLR)</source>
        <translation>ネットワーク障害、
IMSI不明(HLR)</translation>
    </message>
    <message>
        <source>Network failure, Mobile Station illegal</source>
        <translation>ネットワーク障害、不正な移動局</translation>
    </message>
    <message>
        <source>Network failure, Mobile Equipment illegal</source>
        <translation>ネットワーク障害、不正な移動機</translation>
    </message>
    <message>
        <source>Attach reject, GPRS not allowed</source>
        <translation>アタッチ拒否、GPRS不許可</translation>
    </message>
    <message>
        <source>Attach reject, services not allowed</source>
        <translation>アタッチ拒否、サービス不許可</translation>
    </message>
    <message>
        <source>Network failure, Mobile station id unknown</source>
        <translation>ネットワーク障害、移動局ID不明</translation>
    </message>
    <message>
        <source>Network failure, implicitly detached</source>
        <translation>ネットワーク障害、
暗黙的にデタッチ済み</translation>
    </message>
    <message>
        <source>Network failure, PLMN not allowed</source>
        <translation>ネットワーク障害、PLMN不許可</translation>
    </message>
    <message>
        <source>Network failure, Location area not allowed</source>
        <translation>ネットワーク障害、
位置登録エリア不許可</translation>
    </message>
    <message>
        <source>Network failure, roaming not allowed at location</source>
        <translation>ネットワーク障害、
この位置でローミング不許可</translation>
    </message>
    <message>
        <source>Network failure, no GPRS service allowed</source>
        <translation>ネットワーク障害、
GPRSサービス不許可</translation>
    </message>
    <message>
        <source>Network failure, no service at location</source>
        <translation>ネットワーク障害、
この位置でサービスなし</translation>
    </message>
    <message>
        <source>Network failure, service temporarily unreachable</source>
        <translation>ネットワーク障害、
サービスが一時的に到達不可</translation>
    </message>
    <message>
        <source>Network failure, PLMN failure</source>
        <translation>ネットワーク障害、PLMN障害</translation>
    </message>
    <message>
        <source>Authentication reject, MAC failure</source>
        <translation>認証拒否、MAC検証失敗</translation>
    </message>
    <message>
        <source>Authentication reject, sync failure</source>
        <translation>認証拒否、同期失敗</translation>
    </message>
    <message>
        <source>Network failure, congestion</source>
        <translation>ネットワーク障害、輻輳</translation>
    </message>
    <message>
        <source>Authentication reject, GSM unacceptable</source>
        <translation>認証拒否、GSM認証受理不可</translation>
    </message>
    <message>
        <source>Network error, detached</source>
        <translation>ネットワークエラー、
デタッチ済み</translation>
    </message>
    <message>
        <source>Network error, invalid mandatory info</source>
        <translation>ネットワークエラー、
無効な必須情報</translation>
    </message>
    <message>
        <source>Network error, message invalid</source>
        <translation>ネットワークエラー、
無効なメッセージ</translation>
    </message>
    <message>
        <source>Network error, protocol state error</source>
        <translation>ネットワークエラー、
プロトコル状態エラー</translation>
    </message>
    <message>
        <source>Network error, invalid conditional info</source>
        <translation>ネットワークエラー、
無効な条件付き情報</translation>
    </message>
    <message>
        <source>Network error, not compatible with protocol state</source>
        <translation>ネットワークエラー、
プロトコル状態と非互換</translation>
    </message>
    <message>
        <source>Network error, unspecified protocol error</source>
        <translation>ネットワークエラー、
原因未指定のプロトコルエラー</translation>
    </message>
    <message>
        <source>Attach reject, detaching</source>
        <translation>アタッチ拒否、デタッチ中</translation>
    </message>
    <message>
        <source>Attach reject, powerdown</source>
        <translation>アタッチ拒否、電源オフ</translation>
    </message>
    <message>
        <source>Attach reject, domain blocked</source>
        <translation>アタッチ拒否、
ドメインブロック中</translation>
    </message>
    <message>
        <source>Reject, missing PIN</source>
        <translation>拒否、PINなし</translation>
    </message>
    <message>
        <source>Reject, no selected PLMN</source>
        <translation>拒否、PLMN未選択</translation>
    </message>
    <message>
        <source>Reject, PLMN forbidden</source>
        <translation>拒否、PLMN禁止</translation>
    </message>
    <message>
        <source>Reject, PLMN/GPRS not allowed</source>
        <translation>拒否、PLMN/GPRS不許可</translation>
    </message>
    <message>
        <source> MB</source>
        <translation> MB</translation>
    </message>
    <message>
        <source>Help desk not configured.
See User Manual.</source>
        <translation>サポート窓口が未設定
取扱説明書を参照</translation>
    </message>
    <message>
        <source>Unit serial number: </source>
        <translation>本体シリアル番号：</translation>
    </message>
    <message>
        <source>Unknown unit serial number</source>
        <translation>本体シリアル番号不明</translation>
    </message>
    <message>
        <source>Antenna serial number: </source>
        <translation>アンテナシリアル番号：</translation>
    </message>
    <message>
        <source>Unknown antenna serial number</source>
        <translation>アンテナシリアル番号不明</translation>
    </message>
    <message>
        <source>IMEI: </source>
        <translation>IMEI：</translation>
    </message>
    <message>
        <source>Unknown IMEI</source>
        <translation>IMEI不明</translation>
    </message>
    <message>
        <source>IP address: </source>
        <translation>IPアドレス：</translation>
    </message>
    <message>
        <source>Unknown MAC for LAN</source>
        <translation>LANのMAC不明</translation>
    </message>
    <message>
        <source>Enable LAN to be able to read MAC for LAN</source>
        <translation>LANのMACを読み取るには
LANをオンにすること</translation>
    </message>
    <message>
        <source>Unknown MAC for WLAN</source>
        <translation>無線LANのMAC不明</translation>
    </message>
    <message>
        <source>Enable WLAN to be able to read MAC for WLAN</source>
        <translation>無線LANのMACを読み取るには
無線LANをオンにすること</translation>
    </message>
    <message>
        <source>WLAN name: </source>
        <translation>無線LAN名：</translation>
    </message>
    <message>
        <source>(WLAN name hidden)</source>
        <translation>(無線LAN名は非表示)</translation>
    </message>
    <message>
        <source>Software version: </source>
        <translation>ソフトウェア版：</translation>
    </message>
    <message>
        <source>Build number: </source>
        <translation>ビルド番号：</translation>
    </message>
    <message>
        <source>Idle</source>
        <translation>待機中</translation>
    </message>
    <message>
        <source>Charging</source>
        <translation>充電中</translation>
    </message>
    <message>
        <source>Discharging</source>
        <translation>放電中</translation>
    </message>
    <message>
        <source>Position acquired</source>
        <translation>測位完了</translation>
    </message>
    <message>
        <source>N</source>
        <translation>北</translation>
    </message>
    <message>
        <source>S</source>
        <translation>南</translation>
    </message>
    <message>
        <source>E</source>
        <translation>東</translation>
    </message>
    <message>
        <source>W</source>
        <translation>西</translation>
    </message>
    <message>
        <source>Precharging</source>
        <translation>予備充電中</translation>
    </message>
    <message>
        <source>C</source>
        <translation>C</translation>
    </message>
    <message>
        <source>Battery error!</source>
        <translation>バッテリーエラー！</translation>
    </message>
    <message>
        <source>Remaining time %1:%2 h</source>
        <translation>残り時間 %1時間%2分</translation>
    </message>
    <message>
        <source>Remaining charge time %1:%2 h</source>
        <translation>充電残り時間 %1時間%2分</translation>
    </message>
    <message>
        <source>Estimating time...</source>
        <translation>時間を推定中…</translation>
    </message>
    <message>
        <source>Insert SIM</source>
        <translation>SIMを挿入</translation>
    </message>
    <message>
        <source>Initializing SIM</source>
        <translation>SIM初期化中</translation>
    </message>
    <message>
        <source>Enter PUK in web interface</source>
        <translation>Web画面でPUKを入力</translation>
    </message>
    <message>
        <source>Enter PIN?</source>
        <translation>PINを入力?</translation>
    </message>
    <message>
        <source>Point now?</source>
        <translation>方向調整を開始?</translation>
    </message>
    <message>
        <source>SIM Lock does not
match inserted SIM</source>
        <translation>SIMロックが
挿入したSIMと不一致</translation>
    </message>
    <message>
        <source>Searching</source>
        <translation>検索中</translation>
    </message>
    <message>
        <source>Registering</source>
        <translation>登録中</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>準備完了</translation>
    </message>
    <message>
        <source>External control</source>
        <translation>外部制御</translation>
    </message>
    <message>
        <source>Bonding slave mode</source>
        <translation>ボンディング
スレーブモード</translation>
    </message>
    <message>
        <source>HDR Half Asymmetric</source>
        <translation>HDR半非対称</translation>
    </message>
    <message>
        <source>HDR Half Symmetric</source>
        <translation>HDR半対称</translation>
    </message>
    <message>
        <source>BGAN X-Stream</source>
        <translation>BGAN X-Stream</translation>
    </message>
    <message>
        <source>HDR Full Asymmetric</source>
        <translation>HDR全非対称</translation>
    </message>
    <message>
        <source>HDR Full Symmetric</source>
        <translation>HDR全対称</translation>
    </message>
    <message>
        <source>2xHDR Full Asymmetric</source>
        <translation>2xHDR全非対称</translation>
    </message>
    <message>
        <source>2xHDR Full Symmetric</source>
        <translation>2xHDR全対称</translation>
    </message>
    <message>
        <source>Standard data: </source>
        <translation>標準データ：</translation>
    </message>
    <message>
        <source>Unknown connection</source>
        <translation>不明な接続</translation>
    </message>
</context>
</TS>
