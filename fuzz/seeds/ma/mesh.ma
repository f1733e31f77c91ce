requires maya "2016";
createNode transform -n "wall";
createNode mesh -n "wallShape" -p "wall";
	setAttr ".iog[0].og[0].gcl" -type "componentList" 1 "f[0:1]";
	setAttr ".uvst[0].uvsn" -type "string" "map1";
	setAttr -s 6 ".uvst[0].uvsp[0:5]" -type "float2" 0 0 1 0 0 1 1 1 0 2 1 2;
	setAttr ".cuvs" -type "string" "map1";
	setAttr ".dcol" yes;
	setAttr ".clst[0].clsn" -type "string" "tint";
	setAttr -s 2 ".clst[0].clsp[0:1]"  1 0 0 1 0 1 0 0.5;
	setAttr -s 6 ".vt[0:5]"  0 0 0 1 0 0 0 1 0 1 1 0 0 1 -1 1 1 -1;
	setAttr -s 2 ".pt[1:2]" -type "float3" 0.1 0 0 0 0.1 0;
	setAttr -s 7 ".ed[0:6]"  0 1 0 2 3 1 2 4 0 5 1 3 0 2 4 1 3 5 1;
	setAttr -s 4 ".n[0:3]" -type "float3"  0 0 1 1e+20 1e+20 1e+20 0 1 0 0 0 1;
	setAttr -s 2 ".fc[0:1]" -type "polyFaces"
		f 4 0 4 -2 -4
		mu 0 4 0 1 3 2
		mc 0 4 0 1 0 -1
		f 4 1 6 -3 -5
		mu 0 4 2 3 5 4
		h 3 0 1 2;
createNode polyCube -n "make"; setAttr ".w" 2; setAttr ".sh" 3; setAttr ".cuv" 4;
createNode polySphere -n "ball"; setAttr ".sa" 5; setAttr ".sh" 4;
createNode polyCylinder -n "tube"; setAttr ".sa" 6; setAttr ".sc" 2;
createNode polyCone -n "tip"; setAttr ".sa" 4;
createNode polyPlane -n "sheet"; setAttr ".sw" 2; setAttr ".sh" 2;
createNode polySubdFace -n "cut"; setAttr ".ics" -type "componentList" 1 "f[0:3]"; setAttr ".dv" 2;
createNode transformGeometry -n "shift"; setAttr ".txf" -type "matrix" 2 0 0 0 0 2 0 0 0 0 2 0 0 1 0 1;
createNode polyColorPerVertex -n "paint"; setAttr -s 2 ".vclr[0:1].vxal" 1; setAttr ".cn" -type "string" "tint";
createNode transform -n "cube"; createNode mesh -n "cubeShape" -p "cube";
	setAttr ".pt[0]" -type "float3" 0 0.5 0;
createNode transform -n "sphere"; createNode mesh -n "sphereShape" -p "sphere";
createNode transform -n "cyl"; createNode mesh -n "cylShape" -p "cyl";
createNode transform -n "cone"; createNode mesh -n "coneShape" -p "cone";
createNode transform -n "plane"; createNode mesh -n "planeShape" -p "plane";
createNode skinCluster -n "skin"; setAttr ".wl[0:1].w" 2 0 0.75 3 0.25 1 1 1;
createNode lambert -n "red"; setAttr ".c" -type "float3" 1 0 0 ; setAttr ".it" -type "float3" 0.5 0.5 0.5 ;
createNode shadingEngine -n "redSG"; setAttr ".ihi" 0;
connectAttr "make.out" "cut.ip";
connectAttr "cut.out" "shift.ig";
connectAttr "shift.og" "paint.ip";
connectAttr "paint.out" "cubeShape.i";
connectAttr "ball.out" "sphereShape.i";
connectAttr "tube.out" "skin.ip[0].ig";
connectAttr "skin.og[0]" "cylShape.i";
connectAttr "tip.out" "coneShape.i";
connectAttr "sheet.out" "planeShape.i";
connectAttr "red.oc" "redSG.ss";
connectAttr "wallShape.iog" "redSG.dsm" -na;
connectAttr "cubeShape.iog.og[0]" "redSG.dsm" -na;
