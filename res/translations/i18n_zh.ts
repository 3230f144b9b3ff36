<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh" sourcelanguage="en">
<context>
    <name>ScreenAntenna</name>
    <message>
        <source>BGAN signal: </source>
        <translation>BGAN信号：</translation>
    </message>
    <message>
        <source>Acquiring position: </source>
        <translation>正在定位：</translation>
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
        <translation>未连接电池</translation>
    </message>
    <message>
        <source>Int</source>
        <translation>内置</translation>
    </message>
    <message>
        <source>Ext</source>
        <translation>外置</translation>
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
        <translation>输入PIN码：</translation>
    </message>
</context>
<context>
    <name>ScreenMenu</name>
    <message>
        <source>CONFORMITY_TEXT</source>
        <translation>制造商特此声明，本无线电设备符合2014/53/EU指令。欧盟符合性声明全文见用户手册。</translation>
    </message>
    <message>
        <source>Point now</source>
        <translation>立即对星</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>显示</translation>
    </message>
    <message>
        <source>Brightness</source>
        <translation>亮度</translation>
    </message>
    <message>
        <source>Level 1</source>
        <translation>级别1</translation>
    </message>
    <message>
        <source>Level 2</source>
        <translation>级别2</translation>
    </message>
    <message>
        <source>Level 3</source>
        <translation>级别3</translation>
    </message>
    <message>
        <source>Level 4</source>
        <translation>级别4</translation>
    </message>
    <message>
        <source>Level 5</source>
        <translation>级别5</translation>
    </message>
    <message>
        <source>Level 6</source>
        <translation>级别6</translation>
    </message>
    <message>
        <source>Level 7</source>
        <translation>级别7</translation>
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
        <translation>1分钟</translation>
    </message>
    <message>
        <source>2 minutes</source>
        <translation>2分钟</translation>
    </message>
    <message>
        <source>5 minutes</source>
        <translation>5分钟</translation>
    </message>
    <message>
        <source>Audio indication</source>
        <translation>声音提示</translation>
    </message>
    <message>
        <source>Pointing</source>
        <translation>对星</translation>
    </message>
    <message>
        <source>On</source>
        <translation>开</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>关</translation>
    </message>
    <message>
        <source>Power-up mode</source>
        <translation>开机模式</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>自动</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>手动</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>语言</translation>
    </message>
    <message>
        <source>Properties</source>
        <translation>属性</translation>
    </message>
    <message>
        <source>IP address</source>
        <translation>IP地址</translation>
    </message>
    <message>
        <source>Hardware</source>
        <translation>硬件</translation>
    </message>
    <message>
        <source>Unit serial number</source>
        <translation>主机序列号</translation>
    </message>
    <message>
        <source>Antenna serial number</source>
        <translation>天线序列号</translation>
    </message>
    <message>
        <source>LAN</source>
        <translation>LAN</translation>
    </message>
    <message>
        <source>WLAN</source>
        <translation>WLAN</translation>
    </message>
    <message>
        <source>Software</source>
        <translation>软件</translation>
    </message>
    <message>
        <source>Conformity</source>
        <translation>合规性</translation>
    </message>
    <message>
        <source>IMEI</source>
        <translation>IMEI</translation>
    </message>
    <message>
        <source>Help desk</source>
        <translation>客服</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>告警</translation>
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
        <translation>服务受限</translation>
    </message>
    <message>
        <source>RM_EV_BDU_USIM_REJECTED</source>
        <translation>SIM卡被拒绝</translation>
    </message>
    <message>
        <source>Timeout</source>
        <translation>超时</translation>
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
        <translation>正在初始化</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>正在连接…</translation>
    </message>
    <message>
        <source> kbps</source>
        <translation> kbps</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>启动</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>StatusUpdater</name>
    <message>
        <source>RM_EV_INFOLVL_INFO</source>
        <translation>信息</translation>
    </message>
    <message>
        <source>EV_ALARM_SIM_MODULE</source>
        <translation>SIM读卡器故障
请联系客服</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMP_SENSOR</source>
        <translation>温度传感器故障
请联系客服</translation>
    </message>
    <message>
        <source>EV_ALARM_GPS_MODULE</source>
        <translation>GPS接收机故障
请联系客服</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_NOT_PRESENT</source>
        <translation>天线未连接
请检查天线电缆</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_LOW_CRITICAL</source>
        <translation>温度严重过低
请让终端升温</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_TOO_LOW</source>
        <translation>温度过低
请让终端升温</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_HIGH_CRITICAL</source>
        <translation>温度严重过高
请让终端冷却</translation>
    </message>
    <message>
        <source>EV_ALARM_TEMPERATURE_TOO_HIGH</source>
        <translation>温度过高
请让终端冷却</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_SATELLITE_SIGNAL_LOST</source>
        <translation>卫星信号丢失
请清除视野遮挡或重新对星</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_CS_REGISTER_FAILED</source>
        <translation>语音(CS)注册失败
请检查签约业务</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_PS_REGISTER_FAILED</source>
        <translation>数据(PS)注册失败
请检查签约业务</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_FAILURE</source>
        <translation>天线故障
请联系客服</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_ERRORLOG_FLASH_FULL</source>
        <translation>错误日志存储器已满
请联系客服</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_INVALID_NETWORK</source>
        <translation>网络无效
请检查SIM卡和签约业务</translation>
    </message>
    <message>
        <source>EV_ALARM_ANTENNA_CABLE_CALIBRATION</source>
        <translation>电缆校准失败
请检查天线电缆</translation>
    </message>
    <message>
        <source>RM_EV_ALARM_DSP_ERROR</source>
        <translation>信号处理器(DSP)错误
请重启终端</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_SW_UPDATE_FAILURE</source>
        <translation>天线软件升级失败
请重启终端</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_SW_UPDATE_PROBLEM</source>
        <translation>天线软件升级出现问题
请重启终端</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_IMAGE_LOAD_FAILURE</source>
        <translation>天线软件未加载
请重启终端</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_ENTER_MAIN_FAIL</source>
        <translation>天线无法启动
请重启终端</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_HPA_COMM_FAIL</source>
        <translation>无法与天线HPA通信
请检查天线电缆</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_REGISTER_REJ</source>
        <translation>注册被网络拒绝
请检查签约业务</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_DEREGISTER_COM</source>
        <translation>已被网络注销</translation>
    </message>
    <message>
        <source>RM_EV_BDU_AL_REGM_DEREGISTER</source>
        <translation>已从网络注销</translation>
    </message>
    <message>
        <source>RM_EV_BDU_FLASH_WRITE_LIMIT</source>
        <translation>闪存写入次数达到上限
请联系客服</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_STARTUP_TEMP_TOO_LOW</source>
        <translation>天线温度过低，无法启动
请让天线升温</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_STARTUP_TIMEOUT</source>
        <translation>天线启动超时
请检查电缆，重启终端</translation>
    </message>
    <message>
        <source>RM_EV_BDU_TEMP_POE_SHUTDOWN</source>
        <translation>温度过高：PoE已关闭
请让终端冷却</translation>
    </message>
    <message>
        <source>RM_EV_BDU_TEMP_REDUCE_DATA</source>
        <translation>温度过高：数据速率已降低
请让终端冷却</translation>
    </message>
    <message>
        <source>EV_BDU_ADU_ILLEGAL_COMBINATION</source>
        <translation>天线与终端不匹配
请使用受支持的天线</translation>
    </message>
    <message>
        <source>RM_EV_BDU_SATELLITE_NOT_VISIBLE</source>
        <translation>卫星不可见
请移至视野无遮挡处</translation>
    </message>
    <message>
        <source>RM_EV_BDU_USIM_MISSING</source>
        <translation>缺少SIM卡
请插入SIM卡</translation>
    </message>
    <message>
        <source>RM_EV_BDU_NAT_TABLE_FULL</source>
        <translation>NAT表已满
请减少连接数</translation>
    </message>
    <message>
        <source>EV_BDU_BP_ANTENNA_HOTSWAP_FAILURE</source>
        <translation>天线被带电更换
请重启终端</translation>
    </message>
    <message>
        <source>EV_BDU_BP_HPA_DC_RESISTOR_LOSS</source>
        <translation>天线电缆电阻过大
请检查天线电缆</translation>
    </message>
    <message>
        <source>EV_BDU_BP_ALIVE_ABSENT</source>
        <translation>天线无响应
请检查电缆，重启终端</translation>
    </message>
    <message>
        <source>EV_BDU_BP_CAPABILITY_CHECK_FAILURE</source>
        <translation>天线能力检查失败
请使用受支持的天线</translation>
    </message>
    <message>
        <source>EV_BDU_BP_STARTUP_DONE_FAILURE</source>
        <translation>天线启动未完成
请重启终端</translation>
    </message>
    <message>
        <source>EV_HPA_CM_VOLTAGE</source>
        <translation>HPA电压超出范围
请检查天线电缆</translation>
    </message>
    <message>
        <source>EV_HPA_CM_TEMP_RANGE</source>
        <translation>HPA温度超出范围
请避免天线过热或过冷</translation>
    </message>
    <message>
        <source>EV_HPA_CM_TXRX_GAIN_RANGE</source>
        <translation>HPA增益(TX/RX)超出范围
请联系客服</translation>
    </message>
    <message>
        <source>EV_HPA_CM_UNEXPECTED_VOLTAGE</source>
        <translation>HPA电压异常
请检查天线电缆</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NO_BUNDLES_DEFINED</source>
        <translation>未设置数据连接
请在Web界面中添加</translation>
    </message>
    <message>
        <source>EV_AP_GUI_VALIDATING_PIN</source>
        <translation>正在验证PIN码
请稍候</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CIPHERING_OFF</source>
        <translation>加密已关闭
通话和数据不受保护</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SEARCHING_FOR_MODEM</source>
        <translation>正在搜索外置调制解调器
请检查其是否已连接</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_LIMIT_EXCEEDED</source>
        <translation>数据连接过多
请停止一个连接后重试</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_AUTO_ACT_FAILED</source>
        <translation>自动连接失败
请手动启动连接</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_FAILED</source>
        <translation>连接失败
请重试</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_LOST</source>
        <translation>连接丢失
请重新启动连接</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NETWORK_FAILURE</source>
        <translation>网络故障
请稍后重试</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NETWORK_FAILURE_RETRY</source>
        <translation>网络故障
正在自动重试</translation>
    </message>
    <message>
        <source>EV_AP_GUI_LAN_DISCONNECTED</source>
        <translation>LAN已断开
请检查LAN电缆</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NOT_ALL_ACTIVATED</source>
        <translation>部分连接未启动
请停止后重新启动</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_UNKNOWN</source>
        <translation>连接失败：原因未知
请重试</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SW_UPDATE_ANTENNA</source>
        <translation>正在升级天线软件
请勿关机</translation>
    </message>
    <message>
        <source>EV_AP_GUI_CONN_CLOSED_REASON_LINK_MON_RECONNECT</source>
        <translation>连接已被链路监控关闭
正在自动重连</translation>
    </message>
    <message>
        <source>EV_AP_GUI_SELECT_NETWORK_ON_WEB</source>
        <translation>未选择网络
请在Web界面中选择</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STARTING_BUNDLE_NAME</source>
        <translation>正在启动：
</translation>
    </message>
    <message>
        <source>EV_AP_GUI_NOT_REGISTERED_TO_NETWORK</source>
        <translation>未注册到网络
请等待状态变为“就绪”</translation>
    </message>
    <message>
        <source>EV_AP_GUI_WRONG_PIN</source>
        <translation>PIN码错误
请重试</translation>
    </message>
    <message>
        <source>No alerts</source>
        <translation>无告警</translation>
    </message>
    <message>
        <source>EV_AP_GUI_DHCP_CLIENT_WITHOUT_BONDING</source>
        <translation>已启用DHCP客户端，未启用绑定
请在Web界面中更改</translation>
    </message>
    <message>
        <source>EV_AP_GUI_INTERNAL_ERROR_REQ_REBOOT</source>
        <translation>内部错误
请重启终端</translation>
    </message>
    <message>
        <source>EV_AP_GUI_MODEM_IN_USE</source>
        <translation>外置调制解调器使用中</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_INITIALIZING</source>
        <translation>正在初始化
请稍候</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_REBOOTING</source>
        <translation>正在重启
请稍候</translation>
    </message>
    <message>
        <source>EV_AP_GUI_STATUS_SYSTEM_SHUTTING_DOWN</source>
        <translation>正在关机
请稍候</translation>
    </message>
    <message>
        <source>EV_NETMGR_SIMCARD_ERR</source>
        <translation>调制解调器：SIM卡错误
请检查调制解调器中的SIM卡</translation>
    </message>
    <message>
        <source>EV_NETMGR_MODEM_ERR</source>
        <translation>调制解调器错误
请重新连接调制解调器</translation>
    </message>
    <message>
        <source>EV_NETMGR_MODEM_UNSUPPORTED</source>
        <translation>不支持此调制解调器
请使用其他调制解调器</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_REDUCED_PERF</source>
        <translation>温度过高：运行速度已降低
请让终端冷却</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_USB</source>
        <translation>温度过高：USB已关闭
请让终端冷却</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_USB_EXT</source>
        <translation>温度过高：外部USB已关闭
请让终端冷却</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_LIMIT_BACKGR</source>
        <translation>温度过高：数据已限速
请让终端冷却</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_CLOSE_CONN</source>
        <translation>温度过高：数据传输已停止
请让终端冷却</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_CLOSE_TERM</source>
        <translation>温度过高：正在关机
请让终端冷却</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_LOW</source>
        <translation>温度过低
请让终端升温</translation>
    </message>
    <message>
        <source>EV_AP_TEMP_POE</source>
        <translation>温度过高：PoE已关闭
请让终端冷却</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ON</source>
        <translation>正在升级软件
请勿关机</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ON_BATTERY_LOW</source>
        <translation>正在升级软件，电池电量低
请连接电源</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_PREPARING_START</source>
        <translation>正在准备软件升级
请勿关机</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SWPK_FILE_OPEN_ERROR</source>
        <translation>升级失败：无法读取文件
请重新上传文件</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_BATTERY_LOW</source>
        <translation>升级被拒绝：电池电量低
请连接电源后重试</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_DOWNGRADE_PREVENTED</source>
        <translation>升级被拒绝：版本较旧
请使用较新版本</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_SWPK_INVALID</source>
        <translation>升级被拒绝：文件无效
请使用适用于此终端的文件</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_SWPK_CORRUPT</source>
        <translation>升级被拒绝：文件已损坏
请重新上传文件</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_START_FAILED</source>
        <translation>软件升级未启动
请重试</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ROLLED_BACK</source>
        <translation>软件升级失败
已恢复旧版本</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SW_INTEGRITY_ERROR</source>
        <translation>软件已损坏
请在Web界面中升级</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_SW_INTEGRITY_ERROR_ANT</source>
        <translation>天线软件已损坏
请在Web界面中升级</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_PREVIOUS_UPDATE_UNFINISHED</source>
        <translation>上次升级未完成
请重启终端后重试</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_REJECTED_RELEASE_ALREADY_ACTIVE</source>
        <translation>升级被拒绝
此版本已在使用中</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_GENERAL_ERROR</source>
        <translation>在线升级失败
请稍后重试</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_PDP_CONTEXT_FAILED</source>
        <translation>在线升级：无数据连接
请稍后重试</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_ONLINE_URL_CONNECT_FAILED</source>
        <translation>在线升级：无法连接服务器
请稍后重试</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_TRANSFER_ERROR</source>
        <translation>升级：文件传输失败
请重试</translation>
    </message>
    <message>
        <source>EV_SW_UPDATE_TRANSFER_TIMEOUT</source>
        <translation>升级：文件传输超时
请重试</translation>
    </message>
    <message>
        <source>EV_PSU_CALIBRATION_ERROR</source>
        <translation>电源校准错误
请联系客服</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_LOW</source>
        <translation>电池电量低
请连接电源</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_TEMP_LOW</source>
        <translation>电池温度过低
请让电池升温</translation>
    </message>
    <message>
        <source>EV_PSU_ALARM_BATTERY_TEMP_HIGH</source>
        <translation>电池温度过高
请让电池冷却</translation>
    </message>
    <message>
        <source>Operator Determined Barring</source>
        <translation>已被运营商禁止</translation>
    </message>
    <message>
        <source>LLC or SNDCP failure</source>
        <translation>LLC或SNDCP故障</translation>
    </message>
    <message>
        <source>Insufficient resources</source>
        <translation>资源不足</translation>
    </message>
    <message>
        <source>Missing or unknown APN</source>
        <translation>APN缺失或未知</translation>
    </message>
    <message>
        <source>Unknown PDP address or PDP type</source>
        <translation>未知PDP地址或PDP类型</translation>
    </message>
    <message>
        <source>User authentication failed</source>
        <translation>用户鉴权失败</translation>
    </message>
    <message>
        <source>Activation rejected by GGSN</source>
        <translation>激活被GGSN拒绝</translation>
    </message>
    <message>
        <source>Activation rejected, unspecified</source>
        <translation>激活被拒绝，未指明原因</translation>
    </message>
    <message>
        <source>Service option not supported</source>
        <translation>不支持此业务选项</translation>
    </message>
    <message>
        <source>Requested service option not subscribed</source>
        <translation>未签约所请求的业务选项</translation>
    </message>
    <message>
        <source>Service option temporarily out of order</source>
        <translation>业务选项暂时不可用</translation>
    </message>
    <message>
        <source>NSAPI already used</source>
        <translation>NSAPI已被使用</translation>
    </message>
    <message>
        <source>Normal deactivation</source>
        <translation>正常去激活</translation>
    </message>
    <message>
        <source>QoS not accepted</source>
        <translation>QoS未被接受</translation>
    </message>
    <message>
        <source>Activation rejected, Network failure</source>
        <translation>激活被拒绝，网络故障</translation>
    </message>
    <message>
        <source>Reactivation required</source>
        <translation>需要重新激活</translation>
    </message>
    <message>
        <source>Feature not supported</source>
        <translation>不支持此功能</translation>
    </message>
    <message>
        <source>Semantic error in the TFT operation</source>
        <translation>TFT操作语义错误</translation>
    </message>
    <message>
        <source>Syntactical error in the TFT operation</source>
        <translation>TFT操作语法错误</translation>
    </message>
    <message>
        <source>Unknown PDP context</source>
        <translation>未知PDP上下文</translation>
    </message>
    <message>
        <source>Semantic errors in packet filter(s)</source>
        <translation>包过滤器语义错误</translation>
    </message>
    <message>
        <source>Syntactical errors in packet filter(s)</source>
        <translation>包过滤器语法错误</translation>
    </message>
    <message>
        <source>PDP context without TFT already activated</source>
        <translation>无TFT的PDP上下文已激活</translation>
    </message>
    <message>
        <source>Reject, detaching</source>
        <translation>拒绝，正在去附着</translation>
    </message>
    <message>
        <source>PS attach rejected</source>
        <translation>数据(PS)附着被拒绝</translation>
    </message>
    <message>
        <source>Activation error, invalid</source>
        <translation>激活错误，无效</translation>
    </message>
    <message>
        <source>Re-activation timeout</source>
        <translation>重新激活超时</translation>
    </message>
    <message>
        <source>Attach reject, timeout</source>
        <translation>附着拒绝，超时</translation>
    </message>
    <message>
        <source>Normal deactivation (from Core Network)</source>
        <translation>正常去激活(核心网发起)</translation>
    </message>
    <message>
        <source>Normal deactivation (power down or reboot)</source>
        <translation>正常去激活(关机或重启)</translation>
    </message>
    <message>
        <source>Normal deactivation (PDP context removed)</source>
        <translation>正常去激活(PDP上下文已删除)</translation>
    </message>
    <message>
        <source>Normal deactivation (AT command)</source>
        <translation>正常去激活(AT命令)</translation>
    </message>
    <message>
        <source>Reject, unspecified</source>
        <translation>拒绝，未指明原因</translation>
    </message>
    <message>
        <source>Reject, reattach required</source>
        <translation>拒绝，需要重新附着</translation>
    </message>
    <message>
        <source>Connection timeout</source>
        <translation>连接超时</translation>
    </message>
    <message>
        <source>Reject, authentication failure</source>
        <translation>拒绝，鉴权失败</translation>
    </message>
    <message>
        <source>Reject, network invalid</source>
        <translation>拒绝，网络无效</translation>
    </message>
    <message>
        <source>Attach Reject, not allowed</source>
        <translation>附着拒绝，不允许</translation>
    </message>
    <message>
        <source>Reject, normal detach</source>
        <translation>拒绝，正常去附着</translation>
    </message>
    <message>
        <source>Attach reject, no IMSI</source>
        <translation>附着拒绝，无IMSI</translation>
    </message>
    <message>
        <source>Attach reject, Service request denied</source>
        <translation>附着拒绝，业务请求被拒绝</translation>
    </message>
    <message>
        <source>Attach reject, searching for PLMN</source>
        <translation>附着拒绝，正在搜索PLMN</translation>
    </message>
    <message>
        <source>Establish Reject, normal</source>
        <translation>建立拒绝，正常</translation>
    </message>
    <message>
        <source>Establish Reject, Radio Network failure</source>
        <translation>建立拒绝，无线网故障</translation>
    </message>
    <message>
        <source>Establish Reject, congestion</source>
        <translation>建立拒绝，拥塞</translation>
    </message>
    <message>
        <source>Establish Reject, unsupported IAI version</source>
        <translation>建立拒绝，不支持此IAI版本</translation>
    </message>
    <message>
        <source>Establish Reject, unsupported UE class</source>
        <translation>建立拒绝，不支持此UE类别</translation>
    </message>
    <message>
        <source>Establish Reject, USIM required</source>
        <translation>建立拒绝，需要USIM卡</translation>
    </message>
    <message>
        <source>Establish Reject, physical channel failure</source>
        <translation>建立拒绝，物理信道故障</translation>
    </message>
    <message>
        <source>Establish Reject, access Class not allowed</source>
        <translation>建立拒绝，不允许此接入等级</translation>
    </message>
    <message>
        <source>Establish Reject, unspecified</source>
        <translation>建立拒绝，未指明原因</translation>
    </message>
    <message>
        <source>Conn. release, normal</source>
        <translation>连接释放，正常</translation>
    </message>
    <message>
        <source>Conn. release, Radio Network security failure</source>
        <translation>连接释放，无线网安全故障</translation>
    </message>
    <message>
        <source>Conn. release, physical channel failure</source>
        <translation>连接释放，物理信道故障</translation>
    </message>
    <message>
        <source>Conn. release, PLMN Search</source>
        <translation>连接释放，PLMN搜索</translation>
    </message>
    <message>
        <source>Conn. release, security command failure</source>
        <translation>连接释放，安全命令失败</translation>
    </message>
    <message>
        <source>Deregister, unknown cause</source>
        <translation>注销，原因未知</translation>
    </message>
    <message>
        <source>Deregister, register with no complete</source>
        <translation>注销，注册未完成</translation>
    </message>
    <message>
        <source>Deregister, service area BARRED</source>
        <translation>注销，服务区已禁止</translation>
    </message>
    <message>
        <source>Deregister, position required</source>
        <translation>注销，需要位置信息</translation>
    </message>
    <message>
        <source>Deregister, Core Network reset</source>
        <translation>注销，核心网复位</translation>
    </message>
    <message>
        <source>Deregister, inactivity</source>
        <translation>注销，无活动</translation>
    </message>
    <message>
        <source>Deregister, position response not received</source>
        <translation>注销，未收到位置响应</translation>
    </message>
    <message>
        <source>Deregister, position age expired</source>
        <translation>注销，位置已过期</translation>
    </message>
    <message>
        <source>Deregister, decryption error</source>
        <translation>注销，解密错误</translation>
    </message>
    <message>
        <source>Deregister, user specified position not permitted</source>
        <translation>注销，不允许用户指定的位置</translation>
    </message>
    <message>
        <source>Deregister, Radio Network initiated Deregistration</source>
        <translation>注销，无线网发起注销</translation>
    </message>
    <message>
        <source>Deregister, tracked SAT below minimum</source>
        <translation>注销，跟踪的卫星低于最低限值</translation>
    </message>
    <message>
        <source>Deregister, Lease Group not available</source>
        <translation>注销，租用组不可用</translation>
    </message>
    <message>
        <source>Deregister, Lease Mode handover failed</source>
        <translation>注销，租用模式切换失败</translation>
    </message>
    <message>
        <source>Deregister, Radio Failure</source>
        <translation>注销，无线故障</translation>
    </message>
    <message>
        <source>Deregister, Unsupported UE subclass</source>
        <translation>注销，不支持此UE子类别</translation>
    </message>
    <message>
        <source>Deregister, Elevation too low</source>
        <translation>注销，仰角过低</translation>
    </message>
    <message>
        <source>Deregister, Protocol Failure</source>
        <translation>注销，协议故障</translation>
    </message>
    <message>
        <source>Deregister, Invalid UE capabilities</source>
        <translation>注销，UE能力无效</translation>
    </message>
    <message>
        <source>Network failure IMSI unknown (HLR)</source>
        <translation>网络故障，IMSI未知(HLR)</translation>
    </message>
    <message>
        <source>Network failure, Mobile Station illegal</source>
        <translation>网络故障，移动台非法</translation>
    </message>
    <message>
        <source>Network failure, Mobile Equipment illegal</source>
        <translation>网络故障，移动设备非法</translation>
    </message>
    <message>
        <source>Attach reject, GPRS not allowed</source>
        <translation>附着拒绝，不允许GPRS</translation>
    </message>
    <message>
        <source>Attach reject, services not allowed</source>
        <translation>附着拒绝，不允许使用业务</translation>
    </message>
    <message>
        <source>Network failure, Mobile station id unknown</source>
        <translation>网络故障，移动台标识未知</translation>
    </message>
    <message>
        <source>Network failure, implicitly detached</source>
        <translation>网络故障，隐式去附着</translation>
    </message>
    <message>
        <source>Network failure, PLMN not allowed</source>
        <translation>网络故障，不允许此PLMN</translation>
    </message>
    <message>
        <source>Network failure, Location area not allowed</source>
        <translation>网络故障，不允许此位置区</translation>
    </message>
    <message>
        <source>Network failure, roaming not allowed at location</source>
        <translation>网络故障，此位置不允许漫游</translation>
    </message>
    <message>
        <source>Network failure, no GPRS service allowed</source>
        <translation>网络故障，不允许GPRS业务</translation>
    </message>
    <message>
        <source>Network failure, no service at location</source>
        <translation>网络故障，此位置无可用业务</translation>
    </message>
    <message>
        <source>Network failure, service temporarily unreachable</source>
        <translation>网络故障，业务暂时不可达</translation>
    </message>
    <message>
        <source>Network failure, PLMN failure</source>
        <translation>网络故障，PLMN故障</translation>
    </message>
    <message>
        <source>Authentication reject, MAC failure</source>
        <translation>鉴权拒绝，MAC失败</translation>
    </message>
    <message>
        <source>Authentication reject, sync failure</source>
        <translation>鉴权拒绝，同步失败</translation>
    </message>
    <message>
        <source>Network failure, congestion</source>
        <translation>网络故障，拥塞</translation>
    </message>
    <message>
        <source>Authentication reject, GSM unacceptable</source>
        <translation>鉴权拒绝，不接受GSM</translation>
    </message>
    <message>
        <source>Network error, detached</source>
        <translation>网络错误，已去附着</translation>
    </message>
    <message>
        <source>Network error, invalid mandatory info</source>
        <translation>网络错误，必选信息无效</translation>
    </message>
    <message>
        <source>Network error, message invalid</source>
        <translation>网络错误，消息无效</translation>
    </message>
    <message>
        <source>Network error, protocol state error</source>
        <translation>网络错误，协议状态错误</translation>
    </message>
    <message>
        <source>Network error, invalid conditional info</source>
        <translation>网络错误，条件信息无效</translation>
    </message>
    <message>
        <source>Network error, not compatible with protocol state</source>
        <translation>网络错误，与协议状态不兼容</translation>
    </message>
    <message>
        <source>Network error, unspecified protocol error</source>
        <translation>网络错误，未指明的协议错误</translation>
    </message>
    <message>
        <source>Attach reject, detaching</source>
        <translation>附着拒绝，正在去附着</translation>
    </message>
    <message>
        <source>Attach reject, powerdown</source>
        <translation>附着拒绝，关机</translation>
    </message>
    <message>
        <source>Attach reject, domain blocked</source>
        <translation>附着拒绝，域已被阻止</translation>
    </message>
    <message>
        <source>Reject, missing PIN</source>
        <translation>拒绝，缺少PIN码</translation>
    </message>
    <message>
        <source>Reject, no selected PLMN</source>
        <translation>拒绝，未选择PLMN</translation>
    </message>
    <message>
        <source>Reject, PLMN forbidden</source>
        <translation>拒绝，PLMN已禁止</translation>
    </message>
    <message>
        <source>Reject, PLMN/GPRS not allowed</source>
        <translation>拒绝，不允许此PLMN/GPRS</translation>
    </message>
    <message>
        <source> MB</source>
        <translation> MB</translation>
    </message>
    <message>
        <source>Help desk not configured.
See User Manual.</source>
        <translation>未配置客服信息
请参阅用户手册</translation>
    </message>
    <message>
        <source>Unit serial number: </source>
        <translation>主机序列号：</translation>
    </message>
    <message>
        <source>Unknown unit serial number</source>
        <translation>主机序列号未知</translation>
    </message>
    <message>
        <source>Antenna serial number: </source>
        <translation>天线序列号：</translation>
    </message>
    <message>
        <source>Unknown antenna serial number</source>
        <translation>天线序列号未知</translation>
    </message>
    <message>
        <source>IMEI: </source>
        <translation>IMEI：</translation>
    </message>
    <message>
        <source>Unknown IMEI</source>
        <translation>IMEI未知</translation>
    </message>
    <message>
        <source>IP address: </source>
        <translation>IP地址：</translation>
    </message>
    <message>
        <source>Unknown MAC for LAN</source>
        <translation>LAN的MAC地址未知</translation>
    </message>
    <message>
        <source>Enable LAN to be able to read MAC for LAN</source>
        <translation>请启用LAN以读取其MAC地址</translation>
    </message>
    <message>
        <source>Unknown MAC for WLAN</source>
        <translation>WLAN的MAC地址未知</translation>
    </message>
    <message>
        <source>Enable WLAN to be able to read MAC for WLAN</source>
        <translation>请启用WLAN以读取其MAC地址</translation>
    </message>
    <message>
        <source>WLAN name: </source>
        <translation>WLAN名称：</translation>
    </message>
    <message>
        <source>(WLAN name hidden)</source>
        <translation>(WLAN名称已隐藏)</translation>
    </message>
    <message>
        <source>Software version: </source>
        <translation>软件版本：</translation>
    </message>
    <message>
        <source>Build number: </source>
        <translation>构建号：</translation>
    </message>
    <message>
        <source>Idle</source>
        <translation>空闲</translation>
    </message>
    <message>
        <source>Charging</source>
        <translation>充电中</translation>
    </message>
    <message>
        <source>Discharging</source>
        <translation>放电中</translation>
    </message>
    <message>
        <source>Position acquired</source>
        <translation>已定位</translation>
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
        <translation>东</translation>
    </message>
    <message>
        <source>W</source>
        <translation>西</translation>
    </message>
    <message>
        <source>Precharging</source>
        <translation>预充电</translation>
    </message>
    <message>
        <source>C</source>
        <translation>C</translation>
    </message>
    <message>
        <source>Battery error!</source>
        <translation>电池错误！</translation>
    </message>
    <message>
        <source>Remaining time %1:%2 h</source>
        <translation>剩余时间 %1:%2 小时</translation>
    </message>
    <message>
        <source>Remaining charge time %1:%2 h</source>
        <translation>剩余充电时间 %1:%2 小时</translation>
    </message>
    <message>
        <source>Estimating time...</source>
        <translation>正在估算时间…</translation>
    </message>
    <message>
        <source>Insert SIM</source>
        <translation>请插入SIM卡</translation>
    </message>
    <message>
        <source>Initializing SIM</source>
        <translation>正在初始化SIM卡</translation>
    </message>
    <message>
        <source>Enter PUK in web interface</source>
        <translation>请在Web界面中输入PUK码</translation>
    </message>
    <message>
        <source>Enter PIN?</source>
        <translation>输入PIN码?</translation>
    </message>
    <message>
        <source>Point now?</source>
        <translation>立即对星?</translation>
    </message>
    <message>
        <source>SIM Lock does not
match inserted SIM</source>
        <translation>SIM锁与插入的
SIM卡不匹配</translation>
    </message>
    <message>
        <source>Searching</source>
        <translation>正在搜索</translation>
    </message>
    <message>
        <source>Registering</source>
        <translation>正在注册</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>就绪</translation>
    </message>
    <message>
        <source>External control</source>
        <translation>外部控制</translation>
    </message>
    <message>
        <source>Bonding slave mode</source>
        <translation>绑定从模式</translation>
    </message>
    <message>
        <source>HDR Half Asymmetric</source>
        <translation>HDR半非对称</translation>
    </message>
    <message>
        <source>HDR Half Symmetric</source>
        <translation>HDR半对称</translation>
    </message>
    <message>
        <source>BGAN X-Stream</source>
        <translation>BGAN X-Stream</translation>
    </message>
    <message>
        <source>HDR Full Asymmetric</source>
        <translation>HDR全非对称</translation>
    </message>
    <message>
        <source>HDR Full Symmetric</source>
        <translation>HDR全对称</translation>
    </message>
    <message>
        <source>2xHDR Full Asymmetric</source>
        <translation>2xHDR全非对称</translation>
    </message>
    <message>
        <source>2xHDR Full Symmetric</source>
        <translation>2xHDR全对称</translation>
    </message>
    <message>
        <source>Standard data: </source>
        <translation>标准数据：</translation>
    </message>
    <message>
        <source>Unknown connection</source>
        <translation>未知连接</translation>
    </message>
</context>
</TS>
