<?xml version='1.0' encoding='utf-8'?>
<TS version="2.1" language="zh_CN" sourcelanguage="en_US">
<context>
    <name>GlyphForgeWindow</name>
    <message>
        <source>Bold</source>
        <translation>粗体</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>字体</translation>
    </message>
    <message>
        <source>Size (pixels)</source>
        <translation>大小（像素）</translation>
    </message>
    <message>
        <source>Bits a pixel</source>
        <translation>每像素位数</translation>
    </message>
    <message>
        <source>Encoding</source>
        <translation>编码</translation>
    </message>
    <message>
        <source>Codes</source>
        <translation>编码范围</translation>
    </message>
    <message>
        <source>Font id</source>
        <translation>字库ID</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Preview text</source>
        <translation>预览文字</translation>
    </message>
    <message>
        <source>Write into a project...</source>
        <translation>写入工程...</translation>
    </message>
    <message>
        <source>%1 x %2 pixels, %3 bytes</source>
        <translation>%1 x %2 像素，%3 字节</translation>
    </message>
    <message>
        <source>The project's folder</source>
        <translation>工程文件夹</translation>
    </message>
    <message>
        <source>Written: %1</source>
        <translation>已写入：%1</translation>
    </message>
</context>
<context>
    <name>SerialStampWindow</name>
    <message>
        <source>Installed font</source>
        <translation>已安装字体</translation>
    </message>
    <message>
        <source>Picture strip</source>
        <translation>图片条</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>粗体</translation>
    </message>
    <message>
        <source>Choose...</source>
        <translation>选择...</translation>
    </message>
    <message>
        <source>Transparent</source>
        <translation>透明</translation>
    </message>
    <message>
        <source>Digits from</source>
        <translation>数字来源</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>字体</translation>
    </message>
    <message>
        <source>Size (pixels)</source>
        <translation>大小（像素）</translation>
    </message>
    <message>
        <source>Cells of the strip</source>
        <translation>图片条格数</translation>
    </message>
    <message>
        <source>Text colour</source>
        <translation>文字颜色</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>背景</translation>
    </message>
    <message>
        <source>First icon number</source>
        <translation>首张图片编号</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Write into a project...</source>
        <translation>写入工程...</translation>
    </message>
    <message>
        <source>Pictures (*.png *.bmp *.jpg *.jpeg)</source>
        <translation>图片 (*.png *.bmp *.jpg *.jpeg)</translation>
    </message>
    <message>
        <source>Choose a picture strip of equal cells.</source>
        <translation>请选择由等宽格子组成的图片条。</translation>
    </message>
    <message>
        <source>%1 pictures of %2 x %3 pixels: %4 to %5</source>
        <translation>%1 张 %2 x %3 像素的图片：%4 至 %5</translation>
    </message>
    <message>
        <source>The project's folder</source>
        <translation>工程文件夹</translation>
    </message>
    <message>
        <source>Icon/ already holds pictures with these numbers:
%1
Replace them?</source>
        <translation>Icon/ 中已有相同编号的图片：
%1
是否替换？</translation>
    </message>
    <message>
        <source>Written: %1</source>
        <translation>已写入：%1</translation>
    </message>
</context>
<context>
    <name>vantile::Constanttextedit</name>
    <message>
        <source>Static Text Settings</source>
        <translation>静态文本设置</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Constant Num</source>
        <translation>固定变量编号</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文本</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>颜色</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>字体</translation>
    </message>
    <message>
        <source>Some lines of the file are incomplete; what they hold is shown.</source>
        <translation>文件中有些行不完整，已显示其中的内容。</translation>
    </message>
</context>
<context>
    <name>vantile::Dialog</name>
    <message>
        <source>Widget adjustment</source>
        <translation>控件调整</translation>
    </message>
    <message>
        <source>X:</source>
        <translation>X坐标:</translation>
    </message>
    <message>
        <source>Y:</source>
        <translation>Y坐标:</translation>
    </message>
    <message>
        <source>W:</source>
        <translation>宽度:</translation>
    </message>
    <message>
        <source>H:</source>
        <translation>高度:</translation>
    </message>
    <message>
        <source>Centre X:</source>
        <translation>中心X坐标:</translation>
    </message>
    <message>
        <source>Centre Y:</source>
        <translation>中心Y坐标:</translation>
    </message>
    <message>
        <source>The widget is locked: its rectangle can't be changed.</source>
        <translation>控件已锁定：其矩形不能更改。</translation>
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
    <name>vantile::DialogAbout</name>
    <message>
        <source>About</source>
        <translation>关于</translation>
    </message>
    <message>
        <source>Version: %1</source>
        <translation>版本：%1</translation>
    </message>
    <message>
        <source>Built: %1</source>
        <translation>构建时间：%1</translation>
    </message>
</context>
<context>
    <name>vantile::DialogList</name>
    <message>
        <source>Action list</source>
        <translation>动作列表</translation>
    </message>
    <message>
        <source>New</source>
        <translation>新建</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清除</translation>
    </message>
    <message>
        <source>Control mode</source>
        <translation>控制模式</translation>
    </message>
    <message>
        <source>Parameter</source>
        <translation>参数</translation>
    </message>
    <message>
        <source>Data</source>
        <translation>数据</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>Please select the control mode</source>
        <translation>请选择控制模式</translation>
    </message>
</context>
<context>
    <name>vantile::DialogModbus</name>
    <message>
        <source>Modbus command list</source>
        <translation>Modbus 指令列表</translation>
    </message>
    <message>
        <source>Item</source>
        <translation>序号</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>选择</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>设备地址</translation>
    </message>
    <message>
        <source>Function</source>
        <translation>功能码</translation>
    </message>
    <message>
        <source>Register</source>
        <translation>寄存器</translation>
    </message>
    <message>
        <source>WriteAddr</source>
        <translation>写入地址</translation>
    </message>
    <message>
        <source>Quantity</source>
        <translation>数量</translation>
    </message>
    <message>
        <source>Operation</source>
        <translation>操作</translation>
    </message>
    <message>
        <source>Parameter</source>
        <translation>参数</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>重复次数</translation>
    </message>
    <message>
        <source>Response(ms)</source>
        <translation>响应时间(ms)</translation>
    </message>
    <message>
        <source>Reserve</source>
        <translation>保留</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>描述</translation>
    </message>
    <message>
        <source>Load</source>
        <translation>载入</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Move up</source>
        <translation>上移</translation>
    </message>
    <message>
        <source>Move down</source>
        <translation>下移</translation>
    </message>
    <message>
        <source>Some lines of the command list are incomplete; they are shown as far as they go. The file stays as it is until the list is saved.</source>
        <translation>指令列表中有些行不完整，已尽量显示其内容。在保存列表之前，文件保持不变。</translation>
    </message>
</context>
<context>
    <name>vantile::DialogProjectSetting</name>
    <message>
        <source>None</source>
        <translation>无校验</translation>
    </message>
    <message>
        <source>Even</source>
        <translation>偶校验</translation>
    </message>
    <message>
        <source>Odd</source>
        <translation>奇校验</translation>
    </message>
    <message>
        <source>  0 Degree</source>
        <translation>  0 度</translation>
    </message>
    <message>
        <source> 90 Degree</source>
        <translation> 90 度</translation>
    </message>
    <message>
        <source>180 Degree</source>
        <translation>180 度</translation>
    </message>
    <message>
        <source>270 Degree</source>
        <translation>270 度</translation>
    </message>
    <message>
        <source>Chip type</source>
        <translation>芯片型号</translation>
    </message>
    <message>
        <source>Flash type</source>
        <translation>Flash 类型</translation>
    </message>
    <message>
        <source>Flash size</source>
        <translation>Flash 容量</translation>
    </message>
    <message>
        <source>Start page</source>
        <translation>起始页</translation>
    </message>
    <message>
        <source>Languages</source>
        <translation>语言数量</translation>
    </message>
    <message>
        <source>Needle data</source>
        <translation>指针数据格式</translation>
    </message>
    <message>
        <source>General data</source>
        <translation>通用数据</translation>
    </message>
    <message>
        <source>Width (X)</source>
        <translation>宽度 (X)</translation>
    </message>
    <message>
        <source>Height (Y)</source>
        <translation>高度 (Y)</translation>
    </message>
    <message>
        <source>Rotation</source>
        <translation>旋转</translation>
    </message>
    <message>
        <source>Color depth</source>
        <translation>颜色深度</translation>
    </message>
    <message>
        <source>HBPD</source>
        <translation>HBPD</translation>
    </message>
    <message>
        <source>VBPD</source>
        <translation>VBPD</translation>
    </message>
    <message>
        <source>HFPD</source>
        <translation>HFPD</translation>
    </message>
    <message>
        <source>VFPD</source>
        <translation>VFPD</translation>
    </message>
    <message>
        <source>HSPW</source>
        <translation>HSPW</translation>
    </message>
    <message>
        <source>VSPW</source>
        <translation>VSPW</translation>
    </message>
    <message>
        <source>Baud rate</source>
        <translation>波特率</translation>
    </message>
    <message>
        <source>Parity</source>
        <translation>校验</translation>
    </message>
    <message>
        <source>Frame header</source>
        <translation>帧头</translation>
    </message>
    <message>
        <source>Device address</source>
        <translation>设备地址</translation>
    </message>
    <message>
        <source>Device number</source>
        <translation>设备编号</translation>
    </message>
    <message>
        <source>Normal (10~63)</source>
        <translation>正常亮度 (10~63)</translation>
    </message>
    <message>
        <source>Sleep (0~63)</source>
        <translation>休眠亮度 (0~63)</translation>
    </message>
    <message>
        <source>Hold time (s)</source>
        <translation>保持时间 (秒)</translation>
    </message>
    <message>
        <source>Volume (0~16)</source>
        <translation>音量 (0~16)</translation>
    </message>
    <message>
        <source>User ID</source>
        <translation>用户 ID</translation>
    </message>
    <message>
        <source>User version</source>
        <translation>用户版本</translation>
    </message>
    <message>
        <source>Supplier ID</source>
        <translation>供应商 ID</translation>
    </message>
    <message>
        <source>Supplier version</source>
        <translation>供应商版本</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>Modifying the resolution may cause the page to be distorted, are you sure to modify it?</source>
        <translation>修改分辨率可能导致页面变形，确定要修改吗？</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>是</translation>
    </message>
    <message>
        <source>No</source>
        <translation>否</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Project Setting</source>
        <translation>工程设置</translation>
    </message>
    <message>
        <source>Projrct Setting</source>
        <translation>工程设置</translation>
    </message>
    <message>
        <source>General</source>
        <translation>常规</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>Communication</source>
        <translation>通信</translation>
    </message>
    <message>
        <source>TFT panel</source>
        <translation>TFT 屏参数</translation>
    </message>
    <message>
        <source>User Information</source>
        <translation>用户信息</translation>
    </message>
    <message>
        <source>Master mode</source>
        <translation>主机模式</translation>
    </message>
    <message>
        <source>No CRC padding</source>
        <translation>无 CRC 校验</translation>
    </message>
    <message>
        <source>No reply</source>
        <translation>无应答</translation>
    </message>
    <message>
        <source>Key with beep</source>
        <translation>按键蜂鸣</translation>
    </message>
    <message>
        <source>Initialize variable</source>
        <translation>初始化变量</translation>
    </message>
    <message>
        <source>With GBKCode</source>
        <translation>GBK 编码</translation>
    </message>
    <message>
        <source>Page Image Zip</source>
        <translation>页面图片压缩</translation>
    </message>
    <message>
        <source>Byte Swap</source>
        <translation>字节交换</translation>
    </message>
    <message>
        <source>aRGB Png</source>
        <translation>aRGB 格式 PNG</translation>
    </message>
    <message>
        <source>Auto Dimming</source>
        <translation>自动调光</translation>
    </message>
    <message>
        <source>PCLK_Falling</source>
        <translation>PCLK 下降沿</translation>
    </message>
    <message>
        <source>HSYNC_High</source>
        <translation>HSYNC 高电平</translation>
    </message>
    <message>
        <source>VSYNC_High</source>
        <translation>VSYNC 高电平</translation>
    </message>
    <message>
        <source>DE_High</source>
        <translation>DE 高电平</translation>
    </message>
    <message>
        <source>BGR</source>
        <translation>BGR 顺序</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
</context>
<context>
    <name>vantile::DialogTime</name>
    <message>
        <source>File Timestamp</source>
        <translation>编译时间设定</translation>
    </message>
    <message>
        <source>Fixed Timestamp</source>
        <translation>指定时间</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
</context>
<context>
    <name>vantile::DialogWdgVar</name>
    <message>
        <source>WriteAddr Setting</source>
        <translation>变量地址自动分配地址</translation>
    </message>
    <message>
        <source>Paste Auto Address: </source>
        <translation>控件拷贝自动分配地址:</translation>
    </message>
    <message>
        <source>New WriteAddr:</source>
        <translation>新变量地址:</translation>
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
    <name>vantile::Dialogmaterialaddr</name>
    <message>
        <source>OTA Update Addr Setting</source>
        <translation>OTA升级地址设置</translation>
    </message>
    <message>
        <source>Fixed material addresses for OTA updates</source>
        <translation>固定素材地址（OTA升级）</translation>
    </message>
    <message>
        <source>Start Address</source>
        <translation>起始地址</translation>
    </message>
    <message>
        <source>Current Size (Byte)</source>
        <translation>当前大小（字节）</translation>
    </message>
    <message>
        <source>Reserve Length (KB)</source>
        <translation>预留长度（KB）</translation>
    </message>
    <message>
        <source>Press Enter to confirm after typing!</source>
        <translation>输入后请按回车确认！</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Some lines of Addr_Info.txt can't be read. They are left out here; OK writes the file without them.</source>
        <translation>Addr_Info.txt 中有些行无法读取，此处未显示；按确定后写入的文件将不含这些行。</translation>
    </message>
    <message>
        <source>The Font start is not known yet: build the project once.</source>
        <translation>字库起始地址未知：请先编译一次工程。</translation>
    </message>
    <message>
        <source>Reserve beyond the flash, not used: %1.</source>
        <translation>预留长度超出Flash，不予使用：%1。</translation>
    </message>
    <message>
        <source>The ends of these blocks move: %1.</source>
        <translation>以下素材的结束地址将改变：%1。</translation>
    </message>
</context>
<context>
    <name>vantile::LanguageTextEditor</name>
    <message>
        <source>LanguageTextEditor</source>
        <translation>多国语言文本编辑</translation>
    </message>
    <message>
        <source>LanguageTextEditor Page</source>
        <translation>多国语言文本编辑 页面</translation>
    </message>
    <message>
        <source>Load</source>
        <translation>载入</translation>
    </message>
    <message>
        <source>Save as</source>
        <translation>另存为</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Some lines of the file could not be read.</source>
        <translation>文件中有些行无法读取。</translation>
    </message>
</context>
<context>
    <name>vantile::MainWindow</name>
    <message>
        <source>Page</source>
        <translation>页面</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Widget</source>
        <translation>控件</translation>
    </message>
    <message>
        <source>Parameter</source>
        <translation>参数</translation>
    </message>
    <message>
        <source>Data</source>
        <translation>数据</translation>
    </message>
    <message>
        <source>Open project</source>
        <translation>打开工程</translation>
    </message>
    <message>
        <source>New project</source>
        <translation>新建工程</translation>
    </message>
    <message>
        <source>Project Setting</source>
        <translation>工程设置</translation>
    </message>
    <message>
        <source>OTA Update Addr Setting</source>
        <translation>OTA升级地址设置</translation>
    </message>
    <message>
        <source>Build project</source>
        <translation>编译工程</translation>
    </message>
    <message>
        <source>Clear project</source>
        <translation>清理工程</translation>
    </message>
    <message>
        <source>Load latest page cfg</source>
        <translation>加载已保存的页面</translation>
    </message>
    <message>
        <source>Save current page cfg</source>
        <translation>保存当前页面</translation>
    </message>
    <message>
        <source>Save All</source>
        <translation>全部保存</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>Export variable</source>
        <translation>导出变量</translation>
    </message>
    <message>
        <source>Modbus</source>
        <translation>Modbus</translation>
    </message>
    <message>
        <source>Static Text</source>
        <translation>静态文本</translation>
    </message>
    <message>
        <source>Vantile Debug</source>
        <translation>Vantile 串口调试</translation>
    </message>
    <message>
        <source>Font tool</source>
        <translation>字库工具</translation>
    </message>
    <message>
        <source>Numbering</source>
        <translation>编号工具</translation>
    </message>
    <message>
        <source>ToneForge</source>
        <translation>ToneForge 音频工具</translation>
    </message>
    <message>
        <source>Emulator</source>
        <translation>模拟器</translation>
    </message>
    <message>
        <source>WriteAddr</source>
        <translation>写入地址</translation>
    </message>
    <message>
        <source>File Timestamp</source>
        <translation>编译时间设定</translation>
    </message>
    <message>
        <source>Chinese</source>
        <translation>中文</translation>
    </message>
    <message>
        <source>English</source>
        <translation>English</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Directions for use</source>
        <translation>使用说明</translation>
    </message>
    <message>
        <source>Check Project</source>
        <translation>检查工程</translation>
    </message>
    <message>
        <source>About</source>
        <translation>关于</translation>
    </message>
    <message>
        <source>Button</source>
        <translation>按键</translation>
    </message>
    <message>
        <source>SlideMenu</source>
        <translation>滑动菜单</translation>
    </message>
    <message>
        <source>PopupBox</source>
        <translation>弹出窗体</translation>
    </message>
    <message>
        <source>VarAdj</source>
        <translation>变量调节</translation>
    </message>
    <message>
        <source>BatchVar</source>
        <translation>多变量操作</translation>
    </message>
    <message>
        <source>RingTouch</source>
        <translation>环形触摸</translation>
    </message>
    <message>
        <source>Slider</source>
        <translation>滑条</translation>
    </message>
    <message>
        <source>Cross-Page Menu</source>
        <translation>滑动选单</translation>
    </message>
    <message>
        <source>Keypad</source>
        <translation>数字键盘</translation>
    </message>
    <message>
        <source>EN_KB</source>
        <translation>英文键盘</translation>
    </message>
    <message>
        <source>CN_KB</source>
        <translation>中文键盘</translation>
    </message>
    <message>
        <source>KBkey</source>
        <translation>键盘按键</translation>
    </message>
    <message>
        <source>Label</source>
        <translation>字符串</translation>
    </message>
    <message>
        <source>Statictext</source>
        <translation>静态文本</translation>
    </message>
    <message>
        <source>TextRoll</source>
        <translation>滚动文字</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>字库数字</translation>
    </message>
    <message>
        <source>pngNumber</source>
        <translation>图片数字</translation>
    </message>
    <message>
        <source>Clock</source>
        <translation>模拟时钟</translation>
    </message>
    <message>
        <source>RTC</source>
        <translation>数字时钟</translation>
    </message>
    <message>
        <source>Timer</source>
        <translation>计时器</translation>
    </message>
    <message>
        <source>Gif</source>
        <translation>动图</translation>
    </message>
    <message>
        <source>QRCode</source>
        <translation>二维码</translation>
    </message>
    <message>
        <source>Wav</source>
        <translation>音频播放</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>进度条</translation>
    </message>
    <message>
        <source>RingProgress</source>
        <translation>环形进度条</translation>
    </message>
    <message>
        <source>bitIcon</source>
        <translation>位元状态</translation>
    </message>
    <message>
        <source>Auto Variable</source>
        <translation>自动变量</translation>
    </message>
    <message>
        <source>Icon</source>
        <translation>小图标</translation>
    </message>
    <message>
        <source>Curve</source>
        <translation>曲线</translation>
    </message>
    <message>
        <source>Encoder</source>
        <translation>编码器</translation>
    </message>
    <message>
        <source>Needle</source>
        <translation>指针</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>摄像头</translation>
    </message>
    <message>
        <source>Video</source>
        <translation>视频</translation>
    </message>
    <message>
        <source>Left_Align</source>
        <translation>左对齐</translation>
    </message>
    <message>
        <source>Right_Align</source>
        <translation>右对齐</translation>
    </message>
    <message>
        <source>Top_Align</source>
        <translation>顶对齐</translation>
    </message>
    <message>
        <source>Bottom_Align</source>
        <translation>底对齐</translation>
    </message>
    <message>
        <source>Width_Align</source>
        <translation>等宽</translation>
    </message>
    <message>
        <source>Height_Align</source>
        <translation>等高</translation>
    </message>
    <message>
        <source>Shape_Align</source>
        <translation>等大小</translation>
    </message>
    <message>
        <source>Level_layout</source>
        <translation>水平等距</translation>
    </message>
    <message>
        <source>Vertical_layout</source>
        <translation>垂直等距</translation>
    </message>
    <message>
        <source>Zoomin</source>
        <translation>放大</translation>
    </message>
    <message>
        <source>Zoomout</source>
        <translation>缩小</translation>
    </message>
    <message>
        <source>Original</source>
        <translation>原始大小</translation>
    </message>
    <message>
        <source>Widget_Clone</source>
        <translation>克隆控件</translation>
    </message>
    <message>
        <source>Widget_Copy</source>
        <translation>复制控件</translation>
    </message>
    <message>
        <source>Widget_Paste</source>
        <translation>粘贴控件</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Load previous step</source>
        <translation>上一步</translation>
    </message>
    <message>
        <source>Load next step</source>
        <translation>下一步</translation>
    </message>
    <message>
        <source>Lock</source>
        <translation>锁定</translation>
    </message>
    <message>
        <source>Unlock</source>
        <translation>解锁</translation>
    </message>
    <message>
        <source>File</source>
        <translation>文件</translation>
    </message>
    <message>
        <source>Tool</source>
        <translation>工具</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>帮助</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>语言</translation>
    </message>
    <message>
        <source>ToolBar-Text</source>
        <translation>工具栏文字</translation>
    </message>
    <message>
        <source>Auto Save</source>
        <translation>自动保存</translation>
    </message>
    <message>
        <source>toolBar</source>
        <translation>工具栏</translation>
    </message>
    <message>
        <source>New page</source>
        <translation>新建页面</translation>
    </message>
    <message>
        <source>Clone page</source>
        <translation>克隆页面</translation>
    </message>
    <message>
        <source>Clean page</source>
        <translation>清空页面</translation>
    </message>
    <message>
        <source>Delete page</source>
        <translation>删除页面</translation>
    </message>
    <message>
        <source>Do you want to clean the page?</source>
        <translation>确定要清空此页面吗？</translation>
    </message>
    <message>
        <source>Do you want to delete the page?</source>
        <translation>确定要删除此页面吗？</translation>
    </message>
    <message>
        <source>Build cancelled: the open page was not saved</source>
        <translation>已取消编译：当前页面未保存</translation>
    </message>
    <message>
        <source>Widgets</source>
        <translation>控件面板</translation>
    </message>
    <message>
        <source>History steps are written again; crash recovery is on.</source>
        <translation>历史步骤已恢复写入，崩溃恢复已开启。</translation>
    </message>
    <message>
        <source>Crash recovery is off: backup.txt cannot be written.</source>
        <translation>崩溃恢复已关闭：无法写入 backup.txt。</translation>
    </message>
    <message>
        <source>Auto-save and undo steps are not kept until the folder can be written.</source>
        <translation>在文件夹可写之前，自动保存和撤销步骤不会被保存。</translation>
    </message>
    <message>
        <source>History steps can't be written: %1</source>
        <translation>无法写入历史步骤：%1</translation>
    </message>
    <message>
        <source>Auto-save fails and crash recovery is off: %1 can't be written</source>
        <translation>自动保存失败，崩溃恢复已关闭：无法写入 %1</translation>
    </message>
    <message>
        <source>Kept the version on disk: %1</source>
        <translation>已保留磁盘上的版本：%1</translation>
    </message>
    <message>
        <source>This file was changed outside the designer since it was read.</source>
        <translation>此文件在读取后已被设计器以外的程序修改。</translation>
    </message>
    <message>
        <source>Keep mine</source>
        <translation>保留我的</translation>
    </message>
    <message>
        <source>Take theirs</source>
        <translation>采用磁盘上的</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Save all cancelled: nothing was written</source>
        <translation>已取消全部保存：未写入任何文件</translation>
    </message>
    <message>
        <source>The folder can't be created</source>
        <translation>无法创建文件夹</translation>
    </message>
    <message>
        <source>Removed the leftover of an interrupted save: %1</source>
        <translation>已删除中断保存留下的临时文件：%1</translation>
    </message>
    <message>
        <source>Multi-Language Text</source>
        <translation>多国语言文本</translation>
    </message>
    <message>
        <source>Check Project: no problems found.</source>
        <translation>检查工程：未发现问题。</translation>
    </message>
    <message>
        <source>Check Project found problems: they are listed in the log and in %1.</source>
        <translation>检查工程发现问题：详见日志和 %1。</translation>
    </message>
    <message>
        <source>Variable control cancelled: the open page was not saved</source>
        <translation>变量控制转换已取消：当前页面未保存</translation>
    </message>
    <message>
        <source>Variable control</source>
        <translation>变量控制转换</translation>
    </message>
    <message>
        <source>%1 is not installed beside the designer</source>
        <translation>%1 未安装在设计器旁边</translation>
    </message>
    <message>
        <source>The timestamp waits for Save All: %1 was not written</source>
        <translation>编译时间待“全部保存”时写入：%1 未写入</translation>
    </message>
    <message>
        <source>Builds are stamped %1</source>
        <translation>编译时间固定为 %1</translation>
    </message>
    <message>
        <source>Builds are stamped with the present time</source>
        <translation>编译时间使用当前时间</translation>
    </message>
    <message>
        <source>Video needs the VC650 controller (chip index 10)</source>
        <translation>视频需要 VC650 控制器（芯片序号 10）</translation>
    </message>
</context>
<context>
    <name>vantile::WidgetLook</name>
    <message>
        <source>Touch and buttons</source>
        <translation>触摸与按键</translation>
    </message>
    <message>
        <source>Text and numbers</source>
        <translation>文本与数字</translation>
    </message>
    <message>
        <source>Icons and gifs</source>
        <translation>图标与动图</translation>
    </message>
    <message>
        <source>Bars and gauges</source>
        <translation>进度条与仪表</translation>
    </message>
    <message>
        <source>Keyboards</source>
        <translation>键盘</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Media</source>
        <translation>媒体</translation>
    </message>
    <message>
        <source>Menus</source>
        <translation>菜单</translation>
    </message>
    <message>
        <source>Curve</source>
        <translation>曲线</translation>
    </message>
</context>
</TS>