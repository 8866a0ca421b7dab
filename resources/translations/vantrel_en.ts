<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
    <context>
        <name>Language</name>
        <message>
            <source>选择语言</source>
            <translation>Select Language</translation>
        </message>
        <message>
            <source>简体中文</source>
            <translation>Simplified Chinese</translation>
        </message>
        <message>
            <source>繁体中文</source>
            <translation>Traditional Chinese</translation>
        </message>
        <message>
            <source>English</source>
            <translation>English</translation>
        </message>
    </context>
    <context>
        <name>MainWindow</name>
        <message>
            <source>保存</source>
            <translation>save</translation>
        </message>
        <message>
            <source>文件已修改，是否保存</source>
            <translation>The file has been modified, whether it is saved or not</translation>
        </message>
        <message>
            <source>是</source>
            <translation>Yes</translation>
        </message>
        <message>
            <source>否</source>
            <translation>No</translation>
        </message>
        <message>
            <source>取消</source>
            <translation>Cancel</translation>
        </message>
        <message>
            <source>保存文件</source>
            <translation>Save file</translation>
        </message>
        <message>
            <source>打开文件</source>
            <translation>open file</translation>
        </message>
        <message>
            <source>文件打开失败</source>
            <translation>Open Failed</translation>
        </message>
        <message>
            <source>文件校验错误</source>
            <translation>File Check Error</translation>
        </message>
    </context>
    <context>
        <name>QObject</name>
        <message>
            <source>子程序一</source>
            <translation>subprogram1</translation>
        </message>
        <message>
            <source>子程序二</source>
            <translation>subprogram2</translation>
        </message>
        <message>
            <source>子程序三</source>
            <translation>subprogram3</translation>
        </message>
        <message>
            <source>子程序四</source>
            <translation>subprogram4</translation>
        </message>
        <message>
            <source>子程序五</source>
            <translation>subprogram5</translation>
        </message>
        <message>
            <source>子程序六</source>
            <translation>subprogram6</translation>
        </message>
        <message>
            <source>子程序七</source>
            <translation>subprogram7</translation>
        </message>
        <message>
            <source>子程序八</source>
            <translation>subprogram8</translation>
        </message>
        <message>
            <source>子程序九</source>
            <translation>subprogram9</translation>
        </message>
        <message>
            <source>子程序十</source>
            <translation>subprogram10</translation>
        </message>
        <message>
            <source>子程序十一</source>
            <translation>subprogram11</translation>
        </message>
        <message>
            <source>子程序十二</source>
            <translation>subprogram12</translation>
        </message>
        <message>
            <source>子程序十三</source>
            <translation>subprogram13</translation>
        </message>
        <message>
            <source>子程序十四</source>
            <translation>subprogram14</translation>
        </message>
        <message>
            <source>子程序十五</source>
            <translation>subprogram15</translation>
        </message>
        <message>
            <source>子程序十六</source>
            <translation>subprogram16</translation>
        </message>
        <message>
            <source>子程序十七</source>
            <translation>subprogram17</translation>
        </message>
        <message>
            <source>子程序十八</source>
            <translation>subprogram18</translation>
        </message>
        <message>
            <source>子程序十九</source>
            <translation>subprogram19</translation>
        </message>
        <message>
            <source>子程序二十</source>
            <translation>subprogram20</translation>
        </message>
        <message>
            <source>子程序二十一</source>
            <translation>subprogram21</translation>
        </message>
        <message>
            <source>子程序二十二</source>
            <translation>subprogram22</translation>
        </message>
        <message>
            <source>子程序二十三</source>
            <translation>subprogram23</translation>
        </message>
        <message>
            <source>子程序二十四</source>
            <translation>subprogram24</translation>
        </message>
        <message>
            <source>子程序二十五</source>
            <translation>subprogram25</translation>
        </message>
        <message>
            <source>子程序二十六</source>
            <translation>subprogram26</translation>
        </message>
        <message>
            <source>子程序二十七</source>
            <translation>subprogram27</translation>
        </message>
        <message>
            <source>子程序二十八</source>
            <translation>subprogram28</translation>
        </message>
        <message>
            <source>子程序二十九</source>
            <translation>subprogram29</translation>
        </message>
        <message>
            <source>子程序三十</source>
            <translation>subprogram30</translation>
        </message>
        <message>
            <source>主程序</source>
            <translation>Main</translation>
        </message>
        <message>
            <source>动作</source>
            <translation>Action</translation>
        </message>
        <message>
            <source>声音</source>
            <translation>Sound</translation>
        </message>
        <message>
            <source>表情</source>
            <translation>Expression</translation>
        </message>
        <message>
            <source>控制</source>
            <translation>Control</translation>
        </message>
        <message>
            <source>前进时间</source>
            <translation>Forward time</translation>
        </message>
        <message>
            <source>后退时间</source>
            <translation>Backward time</translation>
        </message>
        <message>
            <source>左转时间</source>
            <translation>Left turn time</translation>
        </message>
        <message>
            <source>右转时间</source>
            <translation>Right turn time</translation>
        </message>
        <message>
            <source>速度</source>
            <translation>Speed</translation>
        </message>
        <message>
            <source>前进</source>
            <translation>Forward</translation>
        </message>
        <message>
            <source>后退</source>
            <translation>Backward</translation>
        </message>
        <message>
            <source>左转</source>
            <translation>Left turn</translation>
        </message>
        <message>
            <source>右转</source>
            <translation>Right turn</translation>
        </message>
        <message>
            <source>等待</source>
            <translation>wait</translation>
        </message>
        <message>
            <source>停止</source>
            <translation>Stop</translation>
        </message>
        <message>
            <source>单电机顺时针</source>
            <translation>Single motor clockwise</translation>
        </message>
        <message>
            <source>单电机顺时针时间</source>
            <translation>Single motor clockwise time</translation>
        </message>
        <message>
            <source>单电机逆时针</source>
            <translation>Single motor counter clockwise</translation>
        </message>
        <message>
            <source>单电机逆时针时间</source>
            <translation>Single motor counter clockwise time</translation>
        </message>
        <message>
            <source>单电机停止</source>
            <translation>Single motor stop</translation>
        </message>
        <message>
            <source>舵机角度</source>
            <translation>Servo angle</translation>
        </message>
        <message>
            <source>钢琴</source>
            <translation>Piano</translation>
        </message>
        <message>
            <source>动物</source>
            <translation>Animal</translation>
        </message>
        <message>
            <source>心情</source>
            <translation>Mood</translation>
        </message>
        <message>
            <source>打招呼</source>
            <translation>Say hello</translation>
        </message>
        <message>
            <source>交通</source>
            <translation>Traffic</translation>
        </message>
        <message>
            <source>关闭两个表情</source>
            <translation>Close two expressions</translation>
        </message>
        <message>
            <source>数字</source>
            <translation>Number</translation>
        </message>
        <message>
            <source>字母</source>
            <translation>Letter</translation>
        </message>
        <message>
            <source>运算</source>
            <translation>Arithmetic</translation>
        </message>
        <message>
            <source>符号</source>
            <translation>Symbol</translation>
        </message>
        <message>
            <source>关闭一个表情</source>
            <translation>Close an expression</translation>
        </message>
        <message>
            <source>无限循环</source>
            <translation>Infinite loop</translation>
        </message>
        <message>
            <source>多次循环</source>
            <translation>Multiple loop</translation>
        </message>
        <message>
            <source>循环直到红外检测</source>
            <translation>Cycle until infrared detection</translation>
        </message>
        <message>
            <source>循环触碰检测</source>
            <translation>Cyclic Touch Detection</translation>
        </message>
        <message>
            <source>等待红外</source>
            <translation>Waiting for IR</translation>
        </message>
        <message>
            <source>等待触碰</source>
            <translation>Wait for touch</translation>
        </message>
        <message>
            <source>塔勒积木编程</source>
            <translation>Tiler</translation>
        </message>
        <message>
            <source>整型变量</source>
            <translation>Integer</translation>
        </message>
        <message>
            <source>浮点变量</source>
            <translation>Float</translation>
        </message>
        <message>
            <source>模拟变量</source>
            <translation>Simulation</translation>
        </message>
        <message>
            <source>数字输入变量</source>
            <translation>Digital Input</translation>
        </message>
        <message>
            <source>EEPROM变量</source>
            <translation>EEPROM</translation>
        </message>
        <message>
            <source>图像变量</source>
            <translation>Image</translation>
        </message>
        <message>
            <source>语音变量</source>
            <translation>Voice</translation>
        </message>
        <message>
            <source>遥控变量</source>
            <translation>telecontroller</translation>
        </message>
        <message>
            <source>舵机角度变量</source>
            <translation>Steering Angle</translation>
        </message>
        <message>
            <source>按钮变量</source>
            <translation>Button</translation>
        </message>
        <message>
            <source>亮度变量</source>
            <translation>Light</translation>
        </message>
        <message>
            <source>温度变量</source>
            <translation>Temperature</translation>
        </message>
        <message>
            <source>磁敏变量</source>
            <translation>Magnetic Sensitivity</translation>
        </message>
        <message>
            <source>开关变量</source>
            <translation>Switch</translation>
        </message>
        <message>
            <source>灰度变量</source>
            <translation>gray</translation>
        </message>
        <message>
            <source>火焰变量</source>
            <translation>Flame</translation>
        </message>
        <message>
            <source>麦克风变量</source>
            <translation>Microphone</translation>
        </message>
        <message>
            <source>时间变量</source>
            <translation>Timer</translation>
        </message>
        <message>
            <source>红外测距变量</source>
            <translation>Infrared</translation>
        </message>
        <message>
            <source>5灰度变量</source>
            <translation>5 gray</translation>
        </message>
        <message>
            <source>电位器变量</source>
            <translation>Potentiometer</translation>
        </message>
        <message>
            <source>超声变量</source>
            <translation>Ultrasonic</translation>
        </message>
        <message>
            <source>湿度变量</source>
            <translation>humidity</translation>
        </message>
        <message>
            <source>逻辑变量</source>
            <translation>logic</translation>
        </message>
        <message>
            <source>随机数变量</source>
            <translation>random</translation>
        </message>
        <message>
            <source>参数变量</source>
            <translation>parameter</translation>
        </message>
    </context>
    <context>
        <name>TzProgramView</name>
        <message>
            <source>复制</source>
            <translation>copy</translation>
        </message>
        <message>
            <source>黏贴</source>
            <translation>paste</translation>
        </message>
        <message>
            <source>复制并黏贴</source>
            <translation>Copy and paste</translation>
        </message>
        <message>
            <source>取消复制</source>
            <translation>Undo copy</translation>
        </message>
        <message>
            <source>删除</source>
            <translation>Delete</translation>
        </message>
        <message>
            <source>提示</source>
            <translation>Info</translation>
        </message>
        <message>
            <source>主程序不能删除</source>
            <translation>Main program cannot be deleted</translation>
        </message>
        <message>
            <source>文件不存在，是否在列表中删除？</source>
            <translation>The file does not exist. Is it deleted from the list?</translation>
        </message>
        <message>
            <source>是</source>
            <translation>Yes</translation>
        </message>
        <message>
            <source>否</source>
            <translation>No</translation>
        </message>
    </context>
    <context>
        <name>TzToolBar</name>
        <message>
            <source>C 语言程序</source>
            <translation>C program</translation>
        </message>
        <message>
            <source>控制器固件有新的版本，请更新</source>
            <translation>Controller firmware has a new version, please update</translation>
        </message>
        <message>
            <source>最近文档</source>
            <translation>Recent document</translation>
        </message>
        <message>
            <source>新建</source>
            <translation>new</translation>
        </message>
        <message>
            <source>打开</source>
            <translation>open</translation>
        </message>
        <message>
            <source>保存</source>
            <translation>save</translation>
        </message>
        <message>
            <source>另存为</source>
            <translation>save as</translation>
        </message>
        <message>
            <source>关闭</source>
            <translation>close</translation>
        </message>
        <message>
            <source>文件</source>
            <translation>file</translation>
        </message>
        <message>
            <source>放大</source>
            <translation>zoom in</translation>
        </message>
        <message>
            <source>重置缩放</source>
            <translation>Reset and scale</translation>
        </message>
        <message>
            <source>缩小</source>
            <translation>Zoom out</translation>
        </message>
        <message>
            <source>下载</source>
            <translation>Download</translation>
        </message>
        <message>
            <source>程序名:</source>
            <translation>Program name:</translation>
        </message>
        <message>
            <source>选择控制器</source>
            <translation>Select Controller</translation>
        </message>
        <message>
            <source>固件升级</source>
            <translation>Firmware update</translation>
        </message>
        <message>
            <source>检测软件更新</source>
            <translation>Software Update</translation>
        </message>
        <message>
            <source>关于</source>
            <translation>About</translation>
        </message>
        <message>
            <source>更新</source>
            <translation>Update</translation>
        </message>
        <message>
            <source>打开文件</source>
            <translation>Open file</translation>
        </message>
    </context>
    <!-- The window that tells of a new version, still to come. -->
    <context>
        <name>UpgradeDialog</name>
        <message>
            <source>发现新版本</source>
            <translation>Discovery of new versions</translation>
        </message>
        <message>
            <source>新版本检测</source>
            <translation>Check New Version</translation>
        </message>
        <message>
            <source>此版本不再提示</source>
            <translation>This version is no longer prompted</translation>
        </message>
        <message>
            <source>暂不更新</source>
            <translation>Cancel</translation>
        </message>
        <message>
            <source>下载更新</source>
            <translation>Download</translation>
        </message>
        <message>
            <source>关闭</source>
            <translation>close</translation>
        </message>
        <message>
            <source>正在检测新版本...</source>
            <translation>Checking for new version ...</translation>
        </message>
        <message>
            <source>版本号检测错误</source>
            <translation>Version number detection error</translation>
        </message>
        <message>
            <source>数据格式错误</source>
            <translation>Data in wrong format</translation>
        </message>
        <message>
            <source>已经是最新版本，不需要更新</source>
            <translation>It's the latest version, no update is needed.</translation>
        </message>
        <message>
            <source>下载安装包失败</source>
            <translation>Failed to download installation package</translation>
        </message>
        <message>
            <source>提示</source>
            <translation>Info</translation>
        </message>
        <message>
            <source>控制器固件有更新,请更新至新的版本</source>
            <translatorcomment>The question after new firmware has arrived. The dialog that downloads it has a shorter wording.</translatorcomment>
            <translation>Controller firmware has been updated, please update to the new version</translation>
        </message>
    </context>
    <context>
        <name>aboutDialog</name>
        <message>
            <source>名称: </source>
            <translation>Name: </translation>
        </message>
        <message>
            <source>版本: </source>
            <translation>Version: </translation>
        </message>
        <message>
            <source>更多信息请访问</source>
            <translation>More Information</translation>
        </message>
    </context>
    <context>
        <name>buildDialog</name>
        <message>
            <source>取消</source>
            <translation>Cancel</translation>
        </message>
        <message>
            <source>正在编译......</source>
            <translation>Building......</translation>
        </message>
        <message>
            <source>编译成功！</source>
            <translation>Compile Success!</translation>
        </message>
        <message>
            <source>编译失败！</source>
            <translation>Compile Success!</translation>
        </message>
        <message>
            <source>等待另一个窗口编译......</source>
            <translation>Another window builds...</translation>
        </message>
        <message>
            <source>无法启动 gcc/example/build/gcc/make.exe，请重新解压程序</source>
            <translation>The build failed: gcc/example/build/gcc/make.exe can't be started. Unpack Tiler anew.</translation>
        </message>
        <message>
            <source>缺少 %1，请安装：
%2</source>
            <translation>The build failed, not found: %1. Install:
%2</translation>
        </message>
        <message>
            <source>无法写入 gcc/example/user_main.c，请检查磁盘空间和文件权限</source>
            <translation>The build failed: gcc/example/user_main.c can't be written. Check the disk's free space and the file's permissions.</translation>
        </message>
        <message>
            <source>连接控制器....</source>
            <translation>Connecting......</translation>
        </message>
        <message>
            <source>下载成功！</source>
            <translation>Download Success!</translation>
        </message>
        <message>
            <source>下载失败！</source>
            <translation>Download Failed!</translation>
        </message>
        <message>
            <source>确定</source>
            <translation>OK</translation>
        </message>
        <message>
            <source>下载</source>
            <translation>Download</translation>
        </message>
        <message>
            <source>控制器固件有更新,请更新至新的版本</source>
            <translatorcomment>For the update of the firmware, still to come. The window that tells of new versions has a longer wording.</translatorcomment>
            <translation>Controller firmware has been updated, please update</translation>
        </message>
    </context>
    <context>
        <name>buildThread</name>
        <message>
            <source>连接控制器....</source>
            <translation>Connecting......</translation>
        </message>
        <message>
            <source>控制器连接失败！</source>
            <translation>Connect Failed!</translation>
        </message>
    </context>
    <!-- The bar of the window for written programs, still to come. Its "关于" is another word than the one of the main bar. -->
    <context>
        <name>codeedittoolbar</name>
        <message>
            <source>打开文件</source>
            <translation>open file</translation>
        </message>
        <message>
            <source>文件</source>
            <translation>file</translation>
        </message>
        <message>
            <source>视图</source>
            <translation>View</translation>
        </message>
        <message>
            <source>查找</source>
            <translation>Search</translation>
        </message>
        <message>
            <source>替换</source>
            <translation>replace</translation>
        </message>
        <message>
            <source>跳转</source>
            <translation>Jump</translation>
        </message>
        <message>
            <source>撤销</source>
            <translation>Revoke</translation>
        </message>
        <message>
            <source>恢复</source>
            <translation>Recovery</translation>
        </message>
        <message>
            <source>下载</source>
            <translation>Download</translation>
        </message>
        <message>
            <source>切换到流程图</source>
            <translation>Switch to flow chart</translation>
        </message>
        <message>
            <source>新建</source>
            <translation>new</translation>
        </message>
        <message>
            <source>打开</source>
            <translation>open</translation>
        </message>
        <message>
            <source>保存</source>
            <translation>save</translation>
        </message>
        <message>
            <source>另存为</source>
            <translation>save as</translation>
        </message>
        <message>
            <source>关闭</source>
            <translation>close</translation>
        </message>
        <message>
            <source>最近文档</source>
            <translation>Recent document</translation>
        </message>
        <message>
            <source>编程窗口</source>
            <translation>Programming window</translation>
        </message>
        <message>
            <source>编译窗口</source>
            <translation>Compile window</translation>
        </message>
        <message>
            <source>程序名:</source>
            <translation>Program name:</translation>
        </message>
        <message>
            <source>关于</source>
            <translation>Info</translation>
        </message>
    </context>
    <!-- The window for the movements of a robot: its data stands, its face with these texts is still to come. -->
    <context>
        <name>editActionWindow</name>
        <message>
            <source>动作页组</source>
            <translation>Action page group</translation>
        </message>
        <message>
            <source>动作步骤</source>
            <translation>Action steps</translation>
        </message>
        <message>
            <source>添加</source>
            <translation>Add</translation>
        </message>
        <message>
            <source>删除</source>
            <translation>Delete</translation>
        </message>
        <message>
            <source>上移</source>
            <translation>Move up</translation>
        </message>
        <message>
            <source>下移</source>
            <translation>Move down</translation>
        </message>
        <message>
            <source>动作步骤页参数</source>
            <translation>Action step page parameters</translation>
        </message>
        <message>
            <source>重复次数 ：</source>
            <translation>Repetitions:</translation>
        </message>
        <message>
            <source>执行速率：</source>
            <translation>Execution rate:</translation>
        </message>
        <message>
            <source>机器人姿态</source>
            <translation>Robot pose</translation>
        </message>
        <message>
            <source>打开扭矩</source>
            <translation>Turn on torque</translation>
        </message>
        <message>
            <source>关闭扭矩</source>
            <translation>Turn off torque</translation>
        </message>
        <message>
            <source>最小</source>
            <translation>Minimum</translation>
        </message>
        <message>
            <source>归零</source>
            <translation>Return to zero</translation>
        </message>
        <message>
            <source>最大</source>
            <translation>maximum</translation>
        </message>
        <message>
            <source>设置最小值</source>
            <translation>Set minimum</translation>
        </message>
        <message>
            <source>设置0</source>
            <translation>Set 0</translation>
        </message>
        <message>
            <source>设置最大值</source>
            <translation>Set maximum</translation>
        </message>
        <message>
            <source>序号</source>
            <translation>Number</translation>
        </message>
        <message>
            <source>名称</source>
            <translation>Name</translation>
        </message>
        <message>
            <source>下一页</source>
            <translation>next page</translation>
        </message>
        <message>
            <source>退出页</source>
            <translation>Exit page</translation>
        </message>
        <message>
            <source>步骤</source>
            <translation>Step</translation>
        </message>
        <message>
            <source>步骤%1</source>
            <translation>Step%1</translation>
        </message>
        <message>
            <source>执行时间</source>
            <translation>execution time</translation>
        </message>
        <message>
            <source>等待时间</source>
            <translation>waiting time</translation>
        </message>
        <message>
            <source>锁定</source>
            <translation>lock</translation>
        </message>
        <message>
            <source>舵机
ID</source>
            <translation>Steering&#32;
engine ID</translation>
        </message>
        <message>
            <source>3D机器人
角度</source>
            <translation>3D robot&#32;
angle</translation>
        </message>
        <message>
            <source>实际机器人
角度</source>
            <translation>Real robot&#32;
angle</translation>
        </message>
        <message>
            <source>保存</source>
            <translation>save</translation>
        </message>
        <message>
            <source>是否保存当前动作文件</source>
            <translation>Save or not</translation>
        </message>
        <message>
            <source>是</source>
            <translation>Yes</translation>
        </message>
        <message>
            <source>否</source>
            <translation>No</translation>
        </message>
        <message>
            <source>取消</source>
            <translation>Cancel</translation>
        </message>
    </context>
    <!-- The bar of the window for movements, still to come. -->
    <context>
        <name>editactionstoolbar</name>
        <message>
            <source>新建</source>
            <translation>new</translation>
        </message>
        <message>
            <source>导入</source>
            <translation>Import</translation>
        </message>
        <message>
            <source>保存</source>
            <translation>save</translation>
        </message>
        <message>
            <source>下载</source>
            <translation>Download</translation>
        </message>
        <message>
            <source>播放</source>
            <translation>Play</translation>
        </message>
        <message>
            <source>停止</source>
            <translation>Stop</translation>
        </message>
        <message>
            <source>连接</source>
            <translation>Connect</translation>
        </message>
        <message>
            <source>断开</source>
            <translation>Break Off</translation>
        </message>
        <message>
            <source>切换到流程图</source>
            <translation>Switch to flow chart</translation>
        </message>
        <message>
            <source>关于</source>
            <translation>Info</translation>
        </message>
    </context>
    <!-- The box that asks for a line, still to come. -->
    <context>
        <name>gotoDialog</name>
        <message>
            <source>跳转</source>
            <translation>Jump</translation>
        </message>
        <message>
            <source>行号：</source>
            <translation>Line number:</translation>
        </message>
        <message>
            <source>确定</source>
            <translation>OK</translation>
        </message>
        <message>
            <source>取消</source>
            <translation>Cancel</translation>
        </message>
    </context>
    <!-- The box for find and replace, still to come. -->
    <context>
        <name>replaceDialog</name>
        <message>
            <source>替换</source>
            <translation>replace</translation>
        </message>
        <message>
            <source>查找内容：</source>
            <translation>Find content:</translation>
        </message>
        <message>
            <source>替换为：</source>
            <translation>Replace:</translation>
        </message>
        <message>
            <source>查找下一个</source>
            <translation>Find next</translation>
        </message>
        <message>
            <source>全部替换</source>
            <translation>replace all</translation>
        </message>
        <message>
            <source>取消</source>
            <translation>Cancel</translation>
        </message>
        <message>
            <source>全字匹配</source>
            <translatorcomment>Another wording than in the box for find; each box keeps its own.</translatorcomment>
            <translation>Full word matching</translation>
        </message>
        <message>
            <source>区分大小写</source>
            <translation>Case sensitive</translation>
        </message>
    </context>
    <!-- The box for find, still to come. -->
    <context>
        <name>searchDialog</name>
        <message>
            <source>查找</source>
            <translation>Search</translation>
        </message>
        <message>
            <source>查找下一个</source>
            <translation>Find next</translation>
        </message>
        <message>
            <source>取消</source>
            <translation>Cancel</translation>
        </message>
        <message>
            <source>查找内容：</source>
            <translation>Find content:</translation>
        </message>
        <message>
            <source>全字匹配</source>
            <translatorcomment>Another wording than in the box for replace; each box keeps its own.</translatorcomment>
            <translation>whole word</translation>
        </message>
        <message>
            <source>区分大小写</source>
            <translation>Case sensitive</translation>
        </message>
        <message>
            <source>向上</source>
            <translation>Up</translation>
        </message>
        <message>
            <source>向下</source>
            <translation>Down</translation>
        </message>
    </context>
</TS>
