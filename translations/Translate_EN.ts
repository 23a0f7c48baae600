<?xml version='1.0' encoding='utf-8'?>
<TS version="2.1" language="en_US" sourcelanguage="en_US">
<context>
    <name>GlyphForgeWindow</name>
    <message>
        <source>Bold</source>
        <translation>Bold</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Font</translation>
    </message>
    <message>
        <source>Size (pixels)</source>
        <translation>Size (pixels)</translation>
    </message>
    <message>
        <source>Bits a pixel</source>
        <translation>Bits a pixel</translation>
    </message>
    <message>
        <source>Encoding</source>
        <translation>Encoding</translation>
    </message>
    <message>
        <source>Codes</source>
        <translation>Codes</translation>
    </message>
    <message>
        <source>Font id</source>
        <translation>Font id</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Preview text</source>
        <translation>Preview text</translation>
    </message>
    <message>
        <source>Write into a project...</source>
        <translation>Write into a project...</translation>
    </message>
    <message>
        <source>%1 x %2 pixels, %3 bytes</source>
        <translation>%1 x %2 pixels, %3 bytes</translation>
    </message>
    <message>
        <source>The project's folder</source>
        <translation>The project's folder</translation>
    </message>
    <message>
        <source>Written: %1</source>
        <translation>Written: %1</translation>
    </message>
</context>
<context>
    <name>SerialStampWindow</name>
    <message>
        <source>Installed font</source>
        <translation>Installed font</translation>
    </message>
    <message>
        <source>Picture strip</source>
        <translation>Picture strip</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Bold</translation>
    </message>
    <message>
        <source>Choose...</source>
        <translation>Choose...</translation>
    </message>
    <message>
        <source>Transparent</source>
        <translation>Transparent</translation>
    </message>
    <message>
        <source>Digits from</source>
        <translation>Digits from</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Font</translation>
    </message>
    <message>
        <source>Size (pixels)</source>
        <translation>Size (pixels)</translation>
    </message>
    <message>
        <source>Cells of the strip</source>
        <translation>Cells of the strip</translation>
    </message>
    <message>
        <source>Text colour</source>
        <translation>Text colour</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>Background</translation>
    </message>
    <message>
        <source>First icon number</source>
        <translation>First icon number</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Write into a project...</source>
        <translation>Write into a project...</translation>
    </message>
    <message>
        <source>Pictures (*.png *.bmp *.jpg *.jpeg)</source>
        <translation>Pictures (*.png *.bmp *.jpg *.jpeg)</translation>
    </message>
    <message>
        <source>Choose a picture strip of equal cells.</source>
        <translation>Choose a picture strip of equal cells.</translation>
    </message>
    <message>
        <source>%1 pictures of %2 x %3 pixels: %4 to %5</source>
        <translation>%1 pictures of %2 x %3 pixels: %4 to %5</translation>
    </message>
    <message>
        <source>The project's folder</source>
        <translation>The project's folder</translation>
    </message>
    <message>
        <source>Icon/ already holds pictures with these numbers:
%1
Replace them?</source>
        <translation>Icon/ already holds pictures with these numbers:
%1
Replace them?</translation>
    </message>
    <message>
        <source>Written: %1</source>
        <translation>Written: %1</translation>
    </message>
</context>
<context>
    <name>vantile::Constanttextedit</name>
    <message>
        <source>Static Text Settings</source>
        <translation>Static Text Settings</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Constant Num</source>
        <translation>Constant Num</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Color</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Font</translation>
    </message>
    <message>
        <source>Some lines of the file are incomplete; what they hold is shown.</source>
        <translation>Some lines of the file are incomplete; what they hold is shown.</translation>
    </message>
</context>
<context>
    <name>vantile::Dialog</name>
    <message>
        <source>Widget adjustment</source>
        <translation>Widget adjustment</translation>
    </message>
    <message>
        <source>X:</source>
        <translation>X:</translation>
    </message>
    <message>
        <source>Y:</source>
        <translation>Y:</translation>
    </message>
    <message>
        <source>W:</source>
        <translation>W:</translation>
    </message>
    <message>
        <source>H:</source>
        <translation>H:</translation>
    </message>
    <message>
        <source>Centre X:</source>
        <translation>Centre X:</translation>
    </message>
    <message>
        <source>Centre Y:</source>
        <translation>Centre Y:</translation>
    </message>
    <message>
        <source>The widget is locked: its rectangle can't be changed.</source>
        <translation>The widget is locked: its rectangle can't be changed.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>vantile::DialogAbout</name>
    <message>
        <source>About</source>
        <translation>About</translation>
    </message>
    <message>
        <source>Version: %1</source>
        <translation>Version: %1</translation>
    </message>
    <message>
        <source>Built: %1</source>
        <translation>Built: %1</translation>
    </message>
</context>
<context>
    <name>vantile::DialogList</name>
    <message>
        <source>Action list</source>
        <translation>Action list</translation>
    </message>
    <message>
        <source>New</source>
        <translation>New</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>Control mode</source>
        <translation>Control mode</translation>
    </message>
    <message>
        <source>Parameter</source>
        <translation>Parameter</translation>
    </message>
    <message>
        <source>Data</source>
        <translation>Data</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Message</translation>
    </message>
    <message>
        <source>Please select the control mode</source>
        <translation>Please select the control mode</translation>
    </message>
</context>
<context>
    <name>vantile::DialogModbus</name>
    <message>
        <source>Modbus command list</source>
        <translation>Modbus command list</translation>
    </message>
    <message>
        <source>Item</source>
        <translation>Item</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Select</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Address</translation>
    </message>
    <message>
        <source>Function</source>
        <translation>Function</translation>
    </message>
    <message>
        <source>Register</source>
        <translation>Register</translation>
    </message>
    <message>
        <source>WriteAddr</source>
        <translation>WriteAddr</translation>
    </message>
    <message>
        <source>Quantity</source>
        <translation>Quantity</translation>
    </message>
    <message>
        <source>Operation</source>
        <translation>Operation</translation>
    </message>
    <message>
        <source>Parameter</source>
        <translation>Parameter</translation>
    </message>
    <message>
        <source>Repeat</source>
        <translation>Repeat</translation>
    </message>
    <message>
        <source>Response(ms)</source>
        <translation>Response(ms)</translation>
    </message>
    <message>
        <source>Reserve</source>
        <translation>Reserve</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Description</translation>
    </message>
    <message>
        <source>Load</source>
        <translation>Load</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Move up</source>
        <translation>Move up</translation>
    </message>
    <message>
        <source>Move down</source>
        <translation>Move down</translation>
    </message>
    <message>
        <source>Some lines of the command list are incomplete; they are shown as far as they go. The file stays as it is until the list is saved.</source>
        <translation>Some lines of the command list are incomplete; they are shown as far as they go. The file stays as it is until the list is saved.</translation>
    </message>
</context>
<context>
    <name>vantile::DialogProjectSetting</name>
    <message>
        <source>None</source>
        <translation>None</translation>
    </message>
    <message>
        <source>Even</source>
        <translation>Even</translation>
    </message>
    <message>
        <source>Odd</source>
        <translation>Odd</translation>
    </message>
    <message>
        <source>  0 Degree</source>
        <translation>  0 Degree</translation>
    </message>
    <message>
        <source> 90 Degree</source>
        <translation> 90 Degree</translation>
    </message>
    <message>
        <source>180 Degree</source>
        <translation>180 Degree</translation>
    </message>
    <message>
        <source>270 Degree</source>
        <translation>270 Degree</translation>
    </message>
    <message>
        <source>Chip type</source>
        <translation>Chip type</translation>
    </message>
    <message>
        <source>Flash type</source>
        <translation>Flash type</translation>
    </message>
    <message>
        <source>Flash size</source>
        <translation>Flash size</translation>
    </message>
    <message>
        <source>Start page</source>
        <translation>Start page</translation>
    </message>
    <message>
        <source>Languages</source>
        <translation>Languages</translation>
    </message>
    <message>
        <source>Needle data</source>
        <translation>Needle data</translation>
    </message>
    <message>
        <source>General data</source>
        <translation>General data</translation>
    </message>
    <message>
        <source>Width (X)</source>
        <translation>Width (X)</translation>
    </message>
    <message>
        <source>Height (Y)</source>
        <translation>Height (Y)</translation>
    </message>
    <message>
        <source>Rotation</source>
        <translation>Rotation</translation>
    </message>
    <message>
        <source>Color depth</source>
        <translation>Color depth</translation>
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
        <translation>Baud rate</translation>
    </message>
    <message>
        <source>Parity</source>
        <translation>Parity</translation>
    </message>
    <message>
        <source>Frame header</source>
        <translation>Frame header</translation>
    </message>
    <message>
        <source>Device address</source>
        <translation>Device address</translation>
    </message>
    <message>
        <source>Device number</source>
        <translation>Device number</translation>
    </message>
    <message>
        <source>Normal (10~63)</source>
        <translation>Normal (10~63)</translation>
    </message>
    <message>
        <source>Sleep (0~63)</source>
        <translation>Sleep (0~63)</translation>
    </message>
    <message>
        <source>Hold time (s)</source>
        <translation>Hold time (s)</translation>
    </message>
    <message>
        <source>Volume (0~16)</source>
        <translation>Volume (0~16)</translation>
    </message>
    <message>
        <source>User ID</source>
        <translation>User ID</translation>
    </message>
    <message>
        <source>User version</source>
        <translation>User version</translation>
    </message>
    <message>
        <source>Supplier ID</source>
        <translation>Supplier ID</translation>
    </message>
    <message>
        <source>Supplier version</source>
        <translation>Supplier version</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Message</translation>
    </message>
    <message>
        <source>Modifying the resolution may cause the page to be distorted, are you sure to modify it?</source>
        <translation>Modifying the resolution may cause the page to be distorted, are you sure to modify it?</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>No</source>
        <translation>No</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Project Setting</source>
        <translation>Project Setting</translation>
    </message>
    <message>
        <source>Projrct Setting</source>
        <translation>Projrct Setting</translation>
    </message>
    <message>
        <source>General</source>
        <translation>General</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>Application</translation>
    </message>
    <message>
        <source>Communication</source>
        <translation>Communication</translation>
    </message>
    <message>
        <source>TFT panel</source>
        <translation>TFT panel</translation>
    </message>
    <message>
        <source>User Information</source>
        <translation>User Information</translation>
    </message>
    <message>
        <source>Master mode</source>
        <translation>Master mode</translation>
    </message>
    <message>
        <source>No CRC padding</source>
        <translation>No CRC padding</translation>
    </message>
    <message>
        <source>No reply</source>
        <translation>No reply</translation>
    </message>
    <message>
        <source>Key with beep</source>
        <translation>Key with beep</translation>
    </message>
    <message>
        <source>Initialize variable</source>
        <translation>Initialize variable</translation>
    </message>
    <message>
        <source>With GBKCode</source>
        <translation>With GBKCode</translation>
    </message>
    <message>
        <source>Page Image Zip</source>
        <translation>Page Image Zip</translation>
    </message>
    <message>
        <source>Byte Swap</source>
        <translation>Byte Swap</translation>
    </message>
    <message>
        <source>aRGB Png</source>
        <translation>aRGB Png</translation>
    </message>
    <message>
        <source>Auto Dimming</source>
        <translation>Auto Dimming</translation>
    </message>
    <message>
        <source>PCLK_Falling</source>
        <translation>PCLK_Falling</translation>
    </message>
    <message>
        <source>HSYNC_High</source>
        <translation>HSYNC_High</translation>
    </message>
    <message>
        <source>VSYNC_High</source>
        <translation>VSYNC_High</translation>
    </message>
    <message>
        <source>DE_High</source>
        <translation>DE_High</translation>
    </message>
    <message>
        <source>BGR</source>
        <translation>BGR</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>vantile::DialogTime</name>
    <message>
        <source>File Timestamp</source>
        <translation>File Timestamp</translation>
    </message>
    <message>
        <source>Fixed Timestamp</source>
        <translation>Fixed Timestamp</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>vantile::DialogWdgVar</name>
    <message>
        <source>WriteAddr Setting</source>
        <translation>WriteAddr Setting</translation>
    </message>
    <message>
        <source>Paste Auto Address: </source>
        <translation>Paste Auto Address: </translation>
    </message>
    <message>
        <source>New WriteAddr:</source>
        <translation>New WriteAddr:</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>vantile::Dialogmaterialaddr</name>
    <message>
        <source>OTA Update Addr Setting</source>
        <translation>OTA Update Addr Setting</translation>
    </message>
    <message>
        <source>Fixed material addresses for OTA updates</source>
        <translation>Fixed material addresses for OTA updates</translation>
    </message>
    <message>
        <source>Start Address</source>
        <translation>Start Address</translation>
    </message>
    <message>
        <source>Current Size (Byte)</source>
        <translation>Current Size (Byte)</translation>
    </message>
    <message>
        <source>Reserve Length (KB)</source>
        <translation>Reserve Length (KB)</translation>
    </message>
    <message>
        <source>Press Enter to confirm after typing!</source>
        <translation>Press Enter to confirm after typing!</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Some lines of Addr_Info.txt can't be read. They are left out here; OK writes the file without them.</source>
        <translation>Some lines of Addr_Info.txt can't be read. They are left out here; OK writes the file without them.</translation>
    </message>
    <message>
        <source>The Font start is not known yet: build the project once.</source>
        <translation>The Font start is not known yet: build the project once.</translation>
    </message>
    <message>
        <source>Reserve beyond the flash, not used: %1.</source>
        <translation>Reserve beyond the flash, not used: %1.</translation>
    </message>
    <message>
        <source>The ends of these blocks move: %1.</source>
        <translation>The ends of these blocks move: %1.</translation>
    </message>
</context>
<context>
    <name>vantile::LanguageTextEditor</name>
    <message>
        <source>LanguageTextEditor</source>
        <translation>LanguageTextEditor</translation>
    </message>
    <message>
        <source>LanguageTextEditor Page</source>
        <translation>LanguageTextEditor Page</translation>
    </message>
    <message>
        <source>Load</source>
        <translation>Load</translation>
    </message>
    <message>
        <source>Save as</source>
        <translation>Save as</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Some lines of the file could not be read.</source>
        <translation>Some lines of the file could not be read.</translation>
    </message>
</context>
<context>
    <name>vantile::MainWindow</name>
    <message>
        <source>Page</source>
        <translation>Page</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Widget</source>
        <translation>Widget</translation>
    </message>
    <message>
        <source>Parameter</source>
        <translation>Parameter</translation>
    </message>
    <message>
        <source>Data</source>
        <translation>Data</translation>
    </message>
    <message>
        <source>Open project</source>
        <translation>Open project</translation>
    </message>
    <message>
        <source>New project</source>
        <translation>New project</translation>
    </message>
    <message>
        <source>Project Setting</source>
        <translation>Project Setting</translation>
    </message>
    <message>
        <source>OTA Update Addr Setting</source>
        <translation>OTA Update Addr Setting</translation>
    </message>
    <message>
        <source>Build project</source>
        <translation>Build project</translation>
    </message>
    <message>
        <source>Clear project</source>
        <translation>Clear project</translation>
    </message>
    <message>
        <source>Load latest page cfg</source>
        <translation>Load latest page cfg</translation>
    </message>
    <message>
        <source>Save current page cfg</source>
        <translation>Save current page cfg</translation>
    </message>
    <message>
        <source>Save All</source>
        <translation>Save All</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>Exit</translation>
    </message>
    <message>
        <source>Export variable</source>
        <translation>Export variable</translation>
    </message>
    <message>
        <source>Modbus</source>
        <translation>Modbus</translation>
    </message>
    <message>
        <source>Static Text</source>
        <translation>Static Text</translation>
    </message>
    <message>
        <source>Vantile Debug</source>
        <translation>Vantile Debug</translation>
    </message>
    <message>
        <source>Font tool</source>
        <translation>Font tool</translation>
    </message>
    <message>
        <source>Numbering</source>
        <translation>Numbering</translation>
    </message>
    <message>
        <source>ToneForge</source>
        <translation>ToneForge</translation>
    </message>
    <message>
        <source>Emulator</source>
        <translation>Emulator</translation>
    </message>
    <message>
        <source>WriteAddr</source>
        <translation>WriteAddr</translation>
    </message>
    <message>
        <source>File Timestamp</source>
        <translation>File Timestamp</translation>
    </message>
    <message>
        <source>Chinese</source>
        <translation>Chinese</translation>
    </message>
    <message>
        <source>English</source>
        <translation>English</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Directions for use</source>
        <translation>Directions for use</translation>
    </message>
    <message>
        <source>Check Project</source>
        <translation>Check Project</translation>
    </message>
    <message>
        <source>About</source>
        <translation>About</translation>
    </message>
    <message>
        <source>Button</source>
        <translation>Button</translation>
    </message>
    <message>
        <source>SlideMenu</source>
        <translation>SlideMenu</translation>
    </message>
    <message>
        <source>PopupBox</source>
        <translation>PopupBox</translation>
    </message>
    <message>
        <source>VarAdj</source>
        <translation>VarAdj</translation>
    </message>
    <message>
        <source>BatchVar</source>
        <translation>BatchVar</translation>
    </message>
    <message>
        <source>RingTouch</source>
        <translation>RingTouch</translation>
    </message>
    <message>
        <source>Slider</source>
        <translation>Slider</translation>
    </message>
    <message>
        <source>Cross-Page Menu</source>
        <translation>Cross-Page Menu</translation>
    </message>
    <message>
        <source>Keypad</source>
        <translation>Keypad</translation>
    </message>
    <message>
        <source>EN_KB</source>
        <translation>EN_KB</translation>
    </message>
    <message>
        <source>CN_KB</source>
        <translation>CN_KB</translation>
    </message>
    <message>
        <source>KBkey</source>
        <translation>KBkey</translation>
    </message>
    <message>
        <source>Label</source>
        <translation>Label</translation>
    </message>
    <message>
        <source>Statictext</source>
        <translation>Statictext</translation>
    </message>
    <message>
        <source>TextRoll</source>
        <translation>TextRoll</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Number</translation>
    </message>
    <message>
        <source>pngNumber</source>
        <translation>pngNumber</translation>
    </message>
    <message>
        <source>Clock</source>
        <translation>Clock</translation>
    </message>
    <message>
        <source>RTC</source>
        <translation>RTC</translation>
    </message>
    <message>
        <source>Timer</source>
        <translation>Timer</translation>
    </message>
    <message>
        <source>Gif</source>
        <translation>Gif</translation>
    </message>
    <message>
        <source>QRCode</source>
        <translation>QRCode</translation>
    </message>
    <message>
        <source>Wav</source>
        <translation>Wav</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Progress</translation>
    </message>
    <message>
        <source>RingProgress</source>
        <translation>RingProgress</translation>
    </message>
    <message>
        <source>bitIcon</source>
        <translation>bitIcon</translation>
    </message>
    <message>
        <source>Auto Variable</source>
        <translation>Auto Variable</translation>
    </message>
    <message>
        <source>Icon</source>
        <translation>Icon</translation>
    </message>
    <message>
        <source>Curve</source>
        <translation>Curve</translation>
    </message>
    <message>
        <source>Encoder</source>
        <translation>Encoder</translation>
    </message>
    <message>
        <source>Needle</source>
        <translation>Needle</translation>
    </message>
    <message>
        <source>Camera</source>
        <translation>Camera</translation>
    </message>
    <message>
        <source>Video</source>
        <translation>Video</translation>
    </message>
    <message>
        <source>Left_Align</source>
        <translation>Left_Align</translation>
    </message>
    <message>
        <source>Right_Align</source>
        <translation>Right_Align</translation>
    </message>
    <message>
        <source>Top_Align</source>
        <translation>Top_Align</translation>
    </message>
    <message>
        <source>Bottom_Align</source>
        <translation>Bottom_Align</translation>
    </message>
    <message>
        <source>Width_Align</source>
        <translation>Width_Align</translation>
    </message>
    <message>
        <source>Height_Align</source>
        <translation>Height_Align</translation>
    </message>
    <message>
        <source>Shape_Align</source>
        <translation>Shape_Align</translation>
    </message>
    <message>
        <source>Level_layout</source>
        <translation>Level_layout</translation>
    </message>
    <message>
        <source>Vertical_layout</source>
        <translation>Vertical_layout</translation>
    </message>
    <message>
        <source>Zoomin</source>
        <translation>Zoomin</translation>
    </message>
    <message>
        <source>Zoomout</source>
        <translation>Zoomout</translation>
    </message>
    <message>
        <source>Original</source>
        <translation>Original</translation>
    </message>
    <message>
        <source>Widget_Clone</source>
        <translation>Widget_Clone</translation>
    </message>
    <message>
        <source>Widget_Copy</source>
        <translation>Widget_Copy</translation>
    </message>
    <message>
        <source>Widget_Paste</source>
        <translation>Widget_Paste</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>Load previous step</source>
        <translation>Load previous step</translation>
    </message>
    <message>
        <source>Load next step</source>
        <translation>Load next step</translation>
    </message>
    <message>
        <source>Lock</source>
        <translation>Lock</translation>
    </message>
    <message>
        <source>Unlock</source>
        <translation>Unlock</translation>
    </message>
    <message>
        <source>File</source>
        <translation>File</translation>
    </message>
    <message>
        <source>Tool</source>
        <translation>Tool</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>ToolBar-Text</source>
        <translation>ToolBar-Text</translation>
    </message>
    <message>
        <source>Auto Save</source>
        <translation>Auto Save</translation>
    </message>
    <message>
        <source>toolBar</source>
        <translation>toolBar</translation>
    </message>
    <message>
        <source>New page</source>
        <translation>New page</translation>
    </message>
    <message>
        <source>Clone page</source>
        <translation>Clone page</translation>
    </message>
    <message>
        <source>Clean page</source>
        <translation>Clean page</translation>
    </message>
    <message>
        <source>Delete page</source>
        <translation>Delete page</translation>
    </message>
    <message>
        <source>Do you want to clean the page?</source>
        <translation>Do you want to clean the page?</translation>
    </message>
    <message>
        <source>Do you want to delete the page?</source>
        <translation>Do you want to delete the page?</translation>
    </message>
    <message>
        <source>Build cancelled: the open page was not saved</source>
        <translation>Build cancelled: the open page was not saved</translation>
    </message>
    <message>
        <source>Widgets</source>
        <translation>Widgets</translation>
    </message>
    <message>
        <source>History steps are written again; crash recovery is on.</source>
        <translation>History steps are written again; crash recovery is on.</translation>
    </message>
    <message>
        <source>Crash recovery is off: backup.txt cannot be written.</source>
        <translation>Crash recovery is off: backup.txt cannot be written.</translation>
    </message>
    <message>
        <source>Auto-save and undo steps are not kept until the folder can be written.</source>
        <translation>Auto-save and undo steps are not kept until the folder can be written.</translation>
    </message>
    <message>
        <source>History steps can't be written: %1</source>
        <translation>History steps can't be written: %1</translation>
    </message>
    <message>
        <source>Auto-save fails and crash recovery is off: %1 can't be written</source>
        <translation>Auto-save fails and crash recovery is off: %1 can't be written</translation>
    </message>
    <message>
        <source>Kept the version on disk: %1</source>
        <translation>Kept the version on disk: %1</translation>
    </message>
    <message>
        <source>This file was changed outside the designer since it was read.</source>
        <translation>This file was changed outside the designer since it was read.</translation>
    </message>
    <message>
        <source>Keep mine</source>
        <translation>Keep mine</translation>
    </message>
    <message>
        <source>Take theirs</source>
        <translation>Take theirs</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Save all cancelled: nothing was written</source>
        <translation>Save all cancelled: nothing was written</translation>
    </message>
    <message>
        <source>The folder can't be created</source>
        <translation>The folder can't be created</translation>
    </message>
    <message>
        <source>Removed the leftover of an interrupted save: %1</source>
        <translation>Removed the leftover of an interrupted save: %1</translation>
    </message>
    <message>
        <source>Multi-Language Text</source>
        <translation>Multi-Language Text</translation>
    </message>
    <message>
        <source>Check Project: no problems found.</source>
        <translation>Check Project: no problems found.</translation>
    </message>
    <message>
        <source>Check Project found problems: they are listed in the log and in %1.</source>
        <translation>Check Project found problems: they are listed in the log and in %1.</translation>
    </message>
    <message>
        <source>Variable control cancelled: the open page was not saved</source>
        <translation>Variable control cancelled: the open page was not saved</translation>
    </message>
    <message>
        <source>Variable control</source>
        <translation>Variable control</translation>
    </message>
    <message>
        <source>%1 is not installed beside the designer</source>
        <translation>%1 is not installed beside the designer</translation>
    </message>
    <message>
        <source>The timestamp waits for Save All: %1 was not written</source>
        <translation>The timestamp waits for Save All: %1 was not written</translation>
    </message>
    <message>
        <source>Builds are stamped %1</source>
        <translation>Builds are stamped %1</translation>
    </message>
    <message>
        <source>Builds are stamped with the present time</source>
        <translation>Builds are stamped with the present time</translation>
    </message>
    <message>
        <source>Video needs the VC650 controller (chip index 10)</source>
        <translation>Video needs the VC650 controller (chip index 10)</translation>
    </message>
</context>
<context>
    <name>vantile::WidgetLook</name>
    <message>
        <source>Touch and buttons</source>
        <translation>Touch and buttons</translation>
    </message>
    <message>
        <source>Text and numbers</source>
        <translation>Text and numbers</translation>
    </message>
    <message>
        <source>Icons and gifs</source>
        <translation>Icons and gifs</translation>
    </message>
    <message>
        <source>Bars and gauges</source>
        <translation>Bars and gauges</translation>
    </message>
    <message>
        <source>Keyboards</source>
        <translation>Keyboards</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>Media</source>
        <translation>Media</translation>
    </message>
    <message>
        <source>Menus</source>
        <translation>Menus</translation>
    </message>
    <message>
        <source>Curve</source>
        <translation>Curve</translation>
    </message>
</context>
</TS>