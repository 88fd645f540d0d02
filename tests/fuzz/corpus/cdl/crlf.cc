<?xml version="1.0" encoding="UTF-8"?>
<ColorCorrection id="sc12_sh3">
   <Description>Match of the shots</Description>
   <InputDescription>Camera log</InputDescription>
   <SOPNode>
      <ViewingDescription>Rec. 709 monitor</ViewingDescription>
      <Slope>1.2, 1.2, 1.2</Slope>
      <Offset>-0.05
              -0.04
              -0.03</Offset>
      <Power>0.9 0.9 0.9</Power>
   </SOPNode>
   <SatNode>
      <Saturation>1.25</Saturation>
   </SatNode>
</ColorCorrection>
