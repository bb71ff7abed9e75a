#pragma once

namespace norvelis {

/// A drawing in the one-file XML form of 2003 (.vdx), which another program made: a red box on a page of 4 by
/// 3 inches.
inline constexpr const char* kForeignDrawing = R"(<?xml version='1.0' encoding='utf-8'?>
<VisioDocument xmlns='http://schemas.microsoft.com/visio/2003/core' start='190' version='11.0'>
<StyleSheets><StyleSheet ID='0' NameU='No Style' Name='No Style'/></StyleSheets>
<Pages><Page ID='0' NameU='Page-1' Name='Page-1'>
<PageSheet LineStyle='0' FillStyle='0' TextStyle='0'><PageProps><PageWidth>4</PageWidth><PageHeight>3</PageHeight></PageProps></PageSheet>
<Shapes><Shape ID='1' Type='Shape' LineStyle='0' FillStyle='0' TextStyle='0'>
<XForm><PinX>2</PinX><PinY>1.5</PinY><Width>2</Width><Height>1</Height><LocPinX>1</LocPinX><LocPinY>0.5</LocPinY></XForm>
<Fill><FillForegnd>#ff0000</FillForegnd><FillPattern>1</FillPattern></Fill>
<Geom IX='0'><NoFill>0</NoFill><MoveTo IX='1'><X>0</X><Y>0</Y></MoveTo><LineTo IX='2'><X>2</X><Y>0</Y></LineTo><LineTo IX='3'><X>2</X><Y>1</Y></LineTo><LineTo IX='4'><X>0</X><Y>1</Y></LineTo><LineTo IX='5'><X>0</X><Y>0</Y></LineTo></Geom>
</Shape></Shapes></Page></Pages></VisioDocument>)";

}  // namespace norvelis
