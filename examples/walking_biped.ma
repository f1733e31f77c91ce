//Maya ASCII 2016 scene
//Codeset: UTF-8
requires maya "2016";
currentUnit -l centimeter -a degree -t film;
fileInfo "application" "make_walking_biped.py";
createNode joint -n "biped:hips";
	setAttr ".t" -type "double3" 0 95 0 ;
	setAttr ".ro" 2;
	setAttr ".radi" 3;
createNode joint -n "biped:spine" -p "biped:hips";
	setAttr ".t" -type "double3" 0 8 0 ;
	setAttr ".ro" 1;
	setAttr ".jo" -type "double3" 0 0 90 ;
	setAttr ".radi" 2;
createNode joint -n "biped:belly" -p "biped:spine";
	setAttr ".t" -type "double3" 12 0 0 ;
	setAttr ".radi" 2;
createNode joint -n "biped:chest" -p "biped:belly";
	setAttr ".t" -type "double3" 14 0 0 ;
	setAttr ".ro" 3;
	setAttr ".radi" 2.5;
createNode joint -n "biped:neck" -p "biped:chest";
	setAttr ".t" -type "double3" 18 0 -1 ;
	setAttr ".jo" -type "double3" 0 -12 0 ;
	setAttr ".radi" 1.5;
createNode joint -n "biped:head" -p "biped:neck";
	setAttr ".t" -type "double3" 9 0 0 ;
	setAttr ".ro" 5;
	setAttr ".jo" -type "double3" 0 12 0 ;
	setAttr ".radi" 2;
createNode joint -n "biped:head_end" -p "biped:head";
	setAttr ".t" -type "double3" 18 0 0 ;
	setAttr ".radi" 1;
createNode joint -n "biped:left_clavicle" -p "biped:chest";
	setAttr ".t" -type "double3" 13 -4 2 ;
	setAttr ".ro" 4;
	setAttr ".jo" -type "double3" 0 0 -90 ;
	setAttr ".radi" 1;
createNode joint -n "biped:left_upper_arm" -p "biped:left_clavicle";
	setAttr ".t" -type "double3" 14 0 0 ;
	setAttr ".ro" 2;
	setAttr ".jo" -type "double3" 90 0 -81 ;
	setAttr ".radi" 1.5;
createNode joint -n "biped:left_forearm" -p "biped:left_upper_arm";
	setAttr ".t" -type "double3" 27 0 0 ;
	setAttr ".radi" 1.5;
createNode joint -n "biped:left_hand" -p "biped:left_forearm";
	setAttr ".t" -type "double3" 25 0 0 ;
	setAttr ".ro" 4;
	setAttr ".radi" 1;
createNode joint -n "biped:left_fingers" -p "biped:left_hand";
	setAttr ".t" -type "double3" 9 0 0 ;
	setAttr ".radi" 0.7;
createNode joint -n "biped:left_thumb" -p "biped:left_hand";
	setAttr ".t" -type "double3" 3 3 2 ;
	setAttr ".jo" -type "double3" 0 0 35 ;
	setAttr ".radi" 0.7;
createNode joint -n "biped:left_thigh" -p "biped:hips";
	setAttr ".t" -type "double3" 9 -4 0 ;
	setAttr ".ro" 2;
	setAttr ".jo" -type "double3" 90 0 -90 ;
	setAttr ".radi" 2;
createNode joint -n "biped:left_shin" -p "biped:left_thigh";
	setAttr ".t" -type "double3" 44 0 0 ;
	setAttr ".radi" 2;
createNode joint -n "biped:left_foot" -p "biped:left_shin";
	setAttr ".t" -type "double3" 44 0 0 ;
	setAttr ".jo" -type "double3" 0 0 90 ;
	setAttr ".radi" 1;
createNode joint -n "biped:left_toes" -p "biped:left_foot";
	setAttr ".t" -type "double3" 13 -6 0 ;
	setAttr ".radi" 1;
createNode joint -n "biped:left_toes_end" -p "biped:left_toes";
	setAttr ".t" -type "double3" 8 0 0 ;
	setAttr ".radi" 0.7;
createNode joint -n "biped:right_clavicle" -p "biped:chest";
	setAttr ".t" -type "double3" 13 4 2 ;
	setAttr ".ro" 4;
	setAttr ".jo" -type "double3" 0 0 90 ;
	setAttr ".radi" 1;
createNode joint -n "biped:right_upper_arm" -p "biped:right_clavicle";
	setAttr ".t" -type "double3" 14 0 0 ;
	setAttr ".ro" 2;
	setAttr ".jo" -type "double3" 90 0 81 ;
	setAttr ".radi" 1.5;
createNode joint -n "biped:right_forearm" -p "biped:right_upper_arm";
	setAttr ".t" -type "double3" 27 0 0 ;
	setAttr ".radi" 1.5;
createNode joint -n "biped:right_hand" -p "biped:right_forearm";
	setAttr ".t" -type "double3" 25 0 0 ;
	setAttr ".ro" 4;
	setAttr ".radi" 1;
createNode joint -n "biped:right_fingers" -p "biped:right_hand";
	setAttr ".t" -type "double3" 9 0 0 ;
	setAttr ".radi" 0.7;
createNode joint -n "biped:right_thumb" -p "biped:right_hand";
	setAttr ".t" -type "double3" 3 3 -2 ;
	setAttr ".jo" -type "double3" 0 0 35 ;
	setAttr ".radi" 0.7;
createNode joint -n "biped:right_thigh" -p "biped:hips";
	setAttr ".t" -type "double3" -9 -4 0 ;
	setAttr ".ro" 2;
	setAttr ".jo" -type "double3" 90 0 -90 ;
	setAttr ".radi" 2;
createNode joint -n "biped:right_shin" -p "biped:right_thigh";
	setAttr ".t" -type "double3" 44 0 0 ;
	setAttr ".radi" 2;
createNode joint -n "biped:right_foot" -p "biped:right_shin";
	setAttr ".t" -type "double3" 44 0 0 ;
	setAttr ".jo" -type "double3" 0 0 90 ;
	setAttr ".radi" 1;
createNode joint -n "biped:right_toes" -p "biped:right_foot";
	setAttr ".t" -type "double3" 13 -6 0 ;
	setAttr ".radi" 1;
createNode joint -n "biped:right_toes_end" -p "biped:right_toes";
	setAttr ".t" -type "double3" 8 0 0 ;
	setAttr ".radi" 0.7;
createNode transform -n "prop";
createNode locator -n "propShape" -p "prop";
	setAttr ".los" -type "double3" 4 4 4 ;
createNode parentConstraint -n "prop_parentConstraint1" -p "prop";
	addAttr -dcb 0 -ci true -k true -sn "w0" -ln "right_handW0" -dv 1 -min 0 -at "double";
	addAttr -dcb 0 -ci true -k true -sn "w1" -ln "left_handW1" -dv 1 -min 0 -at "double";
	setAttr -s 2 ".tg";
	setAttr ".tg[0].tot" -type "double3" 8 4 0 ;
	setAttr ".tg[0].tor" -type "double3" 0 0 90 ;
	setAttr ".tg[1].tot" -type "double3" 8 4 0 ;
	setAttr ".tg[1].tor" -type "double3" 0 0 90 ;
	setAttr -k on ".w0" 1;
	setAttr -k on ".w1" 0;
createNode animCurveTL -n "biped:hips_translateX";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 9 ".ktv[0:8]"  0 -0.679837388 6 2.09232434 12 0.679837388 18 -2.09232434 24 -0.679837388 30 2.09232434 36
		 0.679837388 42 -2.09232434 48 -0.679837388;
createNode animCurveTL -n "biped:hips_translateY";
	setAttr ".tan" 1;
	setAttr ".wgt" no;
	setAttr -s 17 ".ktv[0:16]"  0 92.4 3 95.2 6 98 9 95.2 12 92.4 15 95.2 18 98 21 95.2 24 92.4 27 95.2 30 98 33 95.2 36
		 92.4 39 95.2 42 98 45 95.2 48 92.4;
	setAttr -s 17 ".kix[0:16]"  0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125
		 0.125 0.125;
	setAttr -s 17 ".kiy[0:16]"  0 4.39820962 0 -4.39820962 0 4.39820962 0 -4.39820962 0 4.39820962 0 -4.39820962 0
		 4.39820962 0 -4.39820962 0;
	setAttr -s 17 ".kox[0:16]"  0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125 0.125
		 0.125 0.125;
	setAttr -s 17 ".koy[0:16]"  0 4.39820962 0 -4.39820962 0 4.39820962 0 -4.39820962 0 4.39820962 0 -4.39820962 0
		 4.39820962 0 -4.39820962 0;
createNode animCurveTL -n "biped:hips_translateZ";
	setAttr ".tan" 2;
	setAttr ".wgt" no;
	setAttr -s 2 ".ktv[0:1]"  0 0 48 201.6;
createNode animCurveTA -n "biped:hips_rotateX";
	setAttr ".tan" 3;
	setAttr ".wgt" no;
	setAttr -s 2 ".ktv[0:1]"  0 2 48 2;
createNode animCurveTA -n "biped:hips_rotateY";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 17 ".ktv[0:16]"  0 -6 3 -4.24264069 6 -3.6739404e-16 9 4.24264069 12 6 15 4.24264069 18 1.10218212e-15 21
		 -4.24264069 24 -6 27 -4.24264069 30 -7.16604072e-15 33 4.24264069 36 6 39 4.24264069 42
		 2.57175828e-15 45 -4.24264069 48 -6;
createNode animCurveTA -n "biped:hips_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 17 ".ktv[0:16]"  0 0 3 2.12132034 6 3 9 2.12132034 12 3.6739404e-16 15 -2.12132034 18 -3 21 -2.12132034 24
		 -7.34788079e-16 27 2.12132034 30 3 33 2.12132034 36 1.10218212e-15 39 -2.12132034 42 -3 45
		 -2.12132034 48 -1.46957616e-15;
createNode animCurveTA -n "biped:spine_rotateX";
	setAttr ".tan" 16;
	setAttr ".wgt" no;
	setAttr -s 9 ".ktv[0:8]"  0 3 6 1.8369702e-16 12 -3 18 -5.5109106e-16 24 3 30 3.58302036e-15 36 -3 42
		 -1.28587914e-15 48 3;
createNode animCurveTA -n "biped:spine_rotateZ";
	setAttr ".tan" 16;
	setAttr ".wgt" no;
	setAttr -s 9 ".ktv[0:8]"  0 0 6 -2 12 -2.4492936e-16 18 2 24 4.8985872e-16 30 -2 36 -7.34788079e-16 42 2 48
		 9.79717439e-16;
createNode animCurveTA -n "biped:belly_rotateY";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 3 ".ktv[0:2]"  0 -1 12 -2.5 24 -1;
	setAttr ".pre" 3;
	setAttr ".pst" 3;
createNode animCurveTA -n "biped:chest_rotateX";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 9 ".ktv[0:8]"  0 7 6 4.2862638e-16 12 -7 18 -1.28587914e-15 24 7 30 8.36038084e-15 36 -7 42
		 -3.00038466e-15 48 7;
createNode animCurveTA -n "biped:chest_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 9 ".ktv[0:8]"  0 0 6 -1.5 12 -1.8369702e-16 18 1.5 24 3.6739404e-16 30 -1.5 36 -5.5109106e-16 42 1.5 48
		 7.34788079e-16;
createNode animCurveTA -n "biped:neck_rotateY";
	setAttr ".tan" 1;
	setAttr ".wgt" yes;
	setAttr -s 7 ".ktv[0:6]"  0 5.76335576 8 1.01643431 16 5.22020993 24 5.76335576 32 1.01643431 40 5.22020993 48
		 5.76335576;
	setAttr -s 7 ".kix[0:6]"  0.25 0.25 0.25 0.25 0.25 0.25 0.25;
	setAttr -s 7 ".kiy[0:6]"  0.133077353 0.0171941645 -0.150271518 0.133077353 0.0171941645 -0.150271518 0.133077353;
	setAttr -s 7 ".kox[0:6]"  0.25 0.25 0.25 0.25 0.25 0.25 0.25;
	setAttr -s 7 ".koy[0:6]"  0.133077353 0.0171941645 -0.150271518 0.133077353 0.0171941645 -0.150271518 0.133077353;
createNode animCurveTA -n "biped:head_rotateX";
	setAttr ".tan" 3;
	setAttr ".wgt" no;
	setAttr -s 5 ".ktv[0:4]"  0 -4 14 -6 24 12 32 10 48 -4;
createNode animCurveTA -n "biped:head_rotateY";
	setAttr ".tan" 16;
	setAttr ".wgt" no;
	setAttr -s 5 ".ktv[0:4]"  0 0 18 -4 25 -18 34 -3 48 0;
createNode animCurveTA -n "biped:left_thigh_rotateY";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 1.65781523 2 -1.57758302 4 -4.25817151 6 -5.51575536 8 -5.05870345 10 -3.08888357 12
		 -0.358518865 14 2.29233871 16 3.64323924 18 3.61642887 20 3.68691526 22 3.5652858 24
		 1.65781523 26 -1.57758302 28 -4.25817151 30 -5.51575536 32 -5.05870345 34 -3.08888357 36
		 -0.358518865 38 2.29233871 40 3.64323924 42 3.61642887 44 3.68691526 46 3.5652858 48
		 1.65781523;
createNode animCurveTA -n "biped:left_thigh_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 35.3908332 2 32.1493363 4 22.8556722 6 15.2130711 8 14.6497366 10 16.7143834 12
		 18.8293775 14 13.9192215 16 12.0698141 18 25.6422408 20 39.732782 22 42.938138 24
		 35.3908332 26 32.1493363 28 22.8556722 30 15.2130711 32 14.6497366 34 16.7143834 36
		 18.8293775 38 13.9192215 40 12.0698141 42 25.6422408 44 39.732782 46 42.938138 48
		 35.3908332;
createNode animCurveTA -n "biped:left_shin_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 -26.6790757 2 -31.2634014 4 -24.0275495 6 -19.6032611 8 -29.2746147 10 -44.1328762 12
		 -57.1078397 14 -55.5390816 16 -54.0599739 18 -60.7510928 20 -58.7009614 22 -42.9780564 24
		 -26.6790757 26 -31.2634014 28 -24.0275495 30 -19.6032611 32 -29.2746147 34 -44.1328762 36
		 -57.1078397 38 -55.5390816 40 -54.0599739 42 -60.7510928 44 -58.7009614 46 -42.9780564 48
		 -26.6790757;
createNode animCurveTA -n "biped:left_foot_rotateX";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 0.074012805 2 0.0778553776 4 1.66127213 6 2.5142248 8 2.46269408 10 2.07863071 12
		 2.75396994 14 2.52054042 16 0.749923735 18 -0.592506257 20 -1.08079238 22 -0.780070801 24
		 0.074012805 26 0.0778553776 28 1.66127213 30 2.5142248 32 2.46269408 34 2.07863071 36
		 2.75396994 38 2.52054042 40 0.749923735 42 -0.592506257 44 -1.08079238 46 -0.780070801 48
		 0.074012805;
createNode animCurveTA -n "biped:left_foot_rotateY";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 6.27910313 2 5.19344004 4 2.94081289 6 -0.0877704214 8 -3.08308279 10 -5.07784536 12
		 -5.35873045 14 -4.58248188 16 -3.05133753 18 -0.170064451 20 3.04063684 22 5.60323116 24
		 6.27910313 26 5.19344004 28 2.94081289 30 -0.0877704214 32 -3.08308279 34 -5.07784536 36
		 -5.35873045 38 -4.58248188 40 -3.05133753 42 -0.170064451 44 3.04063684 46 5.60323116 48
		 6.27910313;
createNode animCurveTA -n "biped:left_foot_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 9.20546436 2 1.12111424 4 3.25797072 6 6.3882639 8 16.4941876 10 23.8993043 12
		 16.4247612 14 6.07924225 16 10.7770383 18 19.0945829 20 21.078935 22 15.4380033 24
		 9.20546436 26 1.12111424 28 3.25797072 30 6.3882639 32 16.4941876 34 23.8993043 36
		 16.4247612 38 6.07924225 40 10.7770383 42 19.0945829 44 21.078935 46 15.4380033 48
		 9.20546436;
createNode animCurveTA -n "biped:left_toes_rotateZ";
	setAttr ".tan" 2;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 0 2 0 4 0 6 0 8 0 10 5.35494899 12 23.7060185 14 37.4756837 16 33.2205 18 18.0151484 20
		 0 22 0 24 0 26 0 28 0 30 0 32 0 34 5.35494899 36 23.7060185 38 37.4756837 40 33.2205 42
		 18.0151484 44 0 46 0 48 0;
createNode animCurveTA -n "biped:left_clavicle_rotateY";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 3 ".ktv[0:2]"  0 0 25 -6 48 0;
createNode animCurveTA -n "biped:left_upper_arm_rotateZ";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 13 ".ktv[0:12]"  0 -23.1822184 4 -16.9703476 8 6.21876602 12 23.226283 16 18.1330569 20 10.8719951 24
		 26.5978363 28 18.0525467 32 11.79766 36 23.3493808 40 16.9918546 44 -6.21014643 48
		 -23.1821986;
createNode animCurveTA -n "biped:left_upper_arm_rotateY";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 13 ".ktv[0:12]"  0 -4.03918068e-07 4 -6.69916435e-05 8 -0.00456781435 12 -0.128043259 16 -1.47558914 20
		 -6.99092504 24 -13.6164627 28 -10.903211 32 -3.58926059 36 -0.485753599 40 -0.0270263579
		 44 -0.000618186449 48 -5.81315494e-06;
createNode animCurveTA -n "biped:left_forearm_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 13 ".ktv[0:12]"  0 24.0000012 4 24.000201 8 27.1185186 12 35.869228 16 36.0177067 20 44.9727751 24
		 64.849388 28 56.7096329 32 37.0773512 36 36.6461976 40 32.54998 44 24.0018546 48
		 24.0000174;
createNode animCurveTA -n "biped:left_forearm_rotateY";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 13 ".ktv[0:12]"  0 -9.80943879e-07 4 -0.000162693991 8 -0.0110932634 12 -0.310962199 16 -3.58357364 20
		 -16.9779608 24 -33.0685522 28 -26.4792266 32 -8.71677573 36 -1.17968731 40 -0.0656354406
		 44 -0.00150130995 48 -1.4117662e-05;
createNode animCurveTA -n "biped:left_hand_rotateZ";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 9 ".ktv[0:8]"  0 3.52671151 6 4.85410197 12 -3.52671151 18 -4.85410197 24 3.52671151 30 4.85410197 36
		 -3.52671151 42 -4.85410197 48 3.52671151;
createNode animCurveTA -n "biped:left_fingers_rotateZ";
	setAttr ".tan" 5;
	setAttr ".wgt" no;
	setAttr -s 2 ".ktv[0:1]"  0 15 25 90;
createNode animCurveTA -n "biped:right_thigh_rotateY";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 0.358518865 2 -2.29233871 4 -3.64323924 6 -3.61642887 8 -3.68691526 10 -3.5652858 12
		 -1.65781523 14 1.57758302 16 4.25817151 18 5.51575536 20 5.05870345 22 3.08888357 24
		 0.358518865 26 -2.29233871 28 -3.64323924 30 -3.61642887 32 -3.68691526 34 -3.5652858 36
		 -1.65781523 38 1.57758302 40 4.25817151 42 5.51575536 44 5.05870345 46 3.08888357 48
		 0.358518865;
createNode animCurveTA -n "biped:right_thigh_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 18.8293775 2 13.9192215 4 12.0698141 6 25.6422408 8 39.732782 10 42.938138 12 35.3908332
		 14 32.1493363 16 22.8556722 18 15.2130711 20 14.6497366 22 16.7143834 24 18.8293775 26
		 13.9192215 28 12.0698141 30 25.6422408 32 39.732782 34 42.938138 36 35.3908332 38
		 32.1493363 40 22.8556722 42 15.2130711 44 14.6497366 46 16.7143834 48 18.8293775;
createNode animCurveTA -n "biped:right_shin_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 -57.1078397 2 -55.5390816 4 -54.0599739 6 -60.7510928 8 -58.7009614 10 -42.9780564 12
		 -26.6790757 14 -31.2634014 16 -24.0275495 18 -19.6032611 20 -29.2746147 22 -44.1328762 24
		 -57.1078397 26 -55.5390816 28 -54.0599739 30 -60.7510928 32 -58.7009614 34 -42.9780564 36
		 -26.6790757 38 -31.2634014 40 -24.0275495 42 -19.6032611 44 -29.2746147 46 -44.1328762 48
		 -57.1078397;
createNode animCurveTA -n "biped:right_foot_rotateX";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 -2.75396994 2 -2.52054042 4 -0.749923735 6 0.592506257 8 1.08079238 10 0.780070801 12
		 -0.074012805 14 -0.0778553776 16 -1.66127213 18 -2.5142248 20 -2.46269408 22 -2.07863071
		 24 -2.75396994 26 -2.52054042 28 -0.749923735 30 0.592506257 32 1.08079238 34 0.780070801
		 36 -0.074012805 38 -0.0778553776 40 -1.66127213 42 -2.5142248 44 -2.46269408 46
		 -2.07863071 48 -2.75396994;
createNode animCurveTA -n "biped:right_foot_rotateY";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 5.35873045 2 4.58248188 4 3.05133753 6 0.170064451 8 -3.04063684 10 -5.60323116 12
		 -6.27910313 14 -5.19344004 16 -2.94081289 18 0.0877704214 20 3.08308279 22 5.07784536 24
		 5.35873045 26 4.58248188 28 3.05133753 30 0.170064451 32 -3.04063684 34 -5.60323116 36
		 -6.27910313 38 -5.19344004 40 -2.94081289 42 0.0877704214 44 3.08308279 46 5.07784536 48
		 5.35873045;
createNode animCurveTA -n "biped:right_foot_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 16.4247612 2 6.07924225 4 10.7770383 6 19.0945829 8 21.078935 10 15.4380033 12
		 9.20546436 14 1.12111424 16 3.25797072 18 6.3882639 20 16.4941876 22 23.8993043 24
		 16.4247612 26 6.07924225 28 10.7770383 30 19.0945829 32 21.078935 34 15.4380033 36
		 9.20546436 38 1.12111424 40 3.25797072 42 6.3882639 44 16.4941876 46 23.8993043 48
		 16.4247612;
createNode animCurveTA -n "biped:right_toes_rotateZ";
	setAttr ".tan" 2;
	setAttr ".wgt" no;
	setAttr -s 25 ".ktv[0:24]"  0 23.7060185 2 37.4756837 4 33.2205 6 18.0151484 8 0 10 0 12 0 14 0 16 0 18 0 20 0 22
		 5.35494899 24 23.7060185 26 37.4756837 28 33.2205 30 18.0151484 32 0 34 0 36 0 38 0 40 0
		 42 0 44 0 46 5.35494899 48 23.7060185;
createNode animCurveTA -n "biped:right_clavicle_rotateY";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 3 ".ktv[0:2]"  0 0 25 6 48 0;
createNode animCurveTA -n "biped:right_upper_arm_rotateZ";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 13 ".ktv[0:12]"  0 23.18222 4 16.9706155 8 -6.20049476 12 -22.71411 16 -12.2307003 20 17.0917051 24
		 27.8680144 28 25.5602971 32 2.55938239 36 -21.4063664 40 -16.8837491 44 6.21261917 48
		 23.1822218;
createNode animCurveTA -n "biped:right_upper_arm_rotateY";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 13 ".ktv[0:12]"  0 4.03918068e-07 4 6.69916435e-05 8 0.00456781435 12 0.128043259 16 1.47558914 20
		 6.99092504 24 13.6164627 28 10.903211 32 3.58926059 36 0.485753599 40 0.0270263579 44
		 0.000618186449 48 5.81315494e-06;
createNode animCurveTA -n "biped:right_forearm_rotateZ";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 13 ".ktv[0:12]"  0 35.5911108 4 32.4854417 8 24.0137034 12 24.3841298 16 28.4267674 20 46.5277026 24
		 65.1669326 28 58.5865705 32 34.7677818 36 25.4572608 40 24.0810791 44 27.107546 48
		 35.5911225;
createNode animCurveTA -n "biped:right_forearm_rotateY";
	setAttr ".tan" 9;
	setAttr ".wgt" no;
	setAttr -s 13 ".ktv[0:12]"  0 9.80943879e-07 4 0.000162693991 8 0.0110932634 12 0.310962199 16 3.58357364 20
		 16.9779608 24 33.0685522 28 26.4792266 32 8.71677573 36 1.17968731 40 0.0656354406 44
		 0.00150130995 48 1.4117662e-05;
createNode animCurveTA -n "biped:right_hand_rotateZ";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 9 ".ktv[0:8]"  0 -3.52671151 6 4.85410197 12 3.52671151 18 -4.85410197 24 -3.52671151 30 4.85410197 36
		 3.52671151 42 -4.85410197 48 -3.52671151;
createNode animCurveTA -n "biped:right_fingers_rotateZ";
	setAttr ".tan" 5;
	setAttr ".wgt" no;
	setAttr -s 2 ".ktv[0:1]"  0 90 25 15;
createNode animCurveTU -n "prop_parentConstraint1_w0";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 4 ".ktv[0:3]"  0 1 23 1 27 0 48 0;
	setAttr -s 4 ".kit[0:3]"  3 3 3 3;
	setAttr -s 4 ".kot[0:3]"  3 3 3 5;
createNode animCurveTU -n "prop_parentConstraint1_w1";
	setAttr ".tan" 18;
	setAttr ".wgt" no;
	setAttr -s 4 ".ktv[0:3]"  0 0 23 0 27 1 48 1;
	setAttr -s 4 ".kit[0:3]"  3 3 3 3;
	setAttr -s 4 ".kot[0:3]"  3 3 3 5;
createNode script -n "sceneConfigurationScriptNode";
	setAttr ".b" -type "string" "playbackOptions -min 0 -max 48 -ast 0 -aet 48 ";
	setAttr ".st" 6;
select -ne :time1;
	setAttr ".o" 0;
connectAttr "biped:hips.s" "biped:spine.is";
connectAttr "biped:spine.s" "biped:belly.is";
connectAttr "biped:belly.s" "biped:chest.is";
connectAttr "biped:chest.s" "biped:neck.is";
connectAttr "biped:neck.s" "biped:head.is";
connectAttr "biped:head.s" "biped:head_end.is";
connectAttr "biped:chest.s" "biped:left_clavicle.is";
connectAttr "biped:left_clavicle.s" "biped:left_upper_arm.is";
connectAttr "biped:left_upper_arm.s" "biped:left_forearm.is";
connectAttr "biped:left_forearm.s" "biped:left_hand.is";
connectAttr "biped:left_hand.s" "biped:left_fingers.is";
connectAttr "biped:left_hand.s" "biped:left_thumb.is";
connectAttr "biped:hips.s" "biped:left_thigh.is";
connectAttr "biped:left_thigh.s" "biped:left_shin.is";
connectAttr "biped:left_shin.s" "biped:left_foot.is";
connectAttr "biped:left_foot.s" "biped:left_toes.is";
connectAttr "biped:left_toes.s" "biped:left_toes_end.is";
connectAttr "biped:chest.s" "biped:right_clavicle.is";
connectAttr "biped:right_clavicle.s" "biped:right_upper_arm.is";
connectAttr "biped:right_upper_arm.s" "biped:right_forearm.is";
connectAttr "biped:right_forearm.s" "biped:right_hand.is";
connectAttr "biped:right_hand.s" "biped:right_fingers.is";
connectAttr "biped:right_hand.s" "biped:right_thumb.is";
connectAttr "biped:hips.s" "biped:right_thigh.is";
connectAttr "biped:right_thigh.s" "biped:right_shin.is";
connectAttr "biped:right_shin.s" "biped:right_foot.is";
connectAttr "biped:right_foot.s" "biped:right_toes.is";
connectAttr "biped:right_toes.s" "biped:right_toes_end.is";
connectAttr "biped:hips_translateX.o" "biped:hips.tx";
connectAttr "biped:hips_translateY.o" "biped:hips.ty";
connectAttr "biped:hips_translateZ.o" "biped:hips.tz";
connectAttr "biped:hips_rotateX.o" "biped:hips.rx";
connectAttr "biped:hips_rotateY.o" "biped:hips.ry";
connectAttr "biped:hips_rotateZ.o" "biped:hips.rz";
connectAttr "biped:spine_rotateX.o" "biped:spine.rx";
connectAttr "biped:spine_rotateZ.o" "biped:spine.rz";
connectAttr "biped:belly_rotateY.o" "biped:belly.ry";
connectAttr "biped:chest_rotateX.o" "biped:chest.rx";
connectAttr "biped:chest_rotateZ.o" "biped:chest.rz";
connectAttr "biped:neck_rotateY.o" "biped:neck.ry";
connectAttr "biped:head_rotateX.o" "biped:head.rx";
connectAttr "biped:head_rotateY.o" "biped:head.ry";
connectAttr "biped:left_thigh_rotateY.o" "biped:left_thigh.ry";
connectAttr "biped:left_thigh_rotateZ.o" "biped:left_thigh.rz";
connectAttr "biped:left_shin_rotateZ.o" "biped:left_shin.rz";
connectAttr "biped:left_foot_rotateX.o" "biped:left_foot.rx";
connectAttr "biped:left_foot_rotateY.o" "biped:left_foot.ry";
connectAttr "biped:left_foot_rotateZ.o" "biped:left_foot.rz";
connectAttr "biped:left_toes_rotateZ.o" "biped:left_toes.rz";
connectAttr "biped:left_clavicle_rotateY.o" "biped:left_clavicle.ry";
connectAttr "biped:left_upper_arm_rotateZ.o" "biped:left_upper_arm.rz";
connectAttr "biped:left_upper_arm_rotateY.o" "biped:left_upper_arm.ry";
connectAttr "biped:left_forearm_rotateZ.o" "biped:left_forearm.rz";
connectAttr "biped:left_forearm_rotateY.o" "biped:left_forearm.ry";
connectAttr "biped:left_hand_rotateZ.o" "biped:left_hand.rz";
connectAttr "biped:left_fingers_rotateZ.o" "biped:left_fingers.rz";
connectAttr "biped:right_thigh_rotateY.o" "biped:right_thigh.ry";
connectAttr "biped:right_thigh_rotateZ.o" "biped:right_thigh.rz";
connectAttr "biped:right_shin_rotateZ.o" "biped:right_shin.rz";
connectAttr "biped:right_foot_rotateX.o" "biped:right_foot.rx";
connectAttr "biped:right_foot_rotateY.o" "biped:right_foot.ry";
connectAttr "biped:right_foot_rotateZ.o" "biped:right_foot.rz";
connectAttr "biped:right_toes_rotateZ.o" "biped:right_toes.rz";
connectAttr "biped:right_clavicle_rotateY.o" "biped:right_clavicle.ry";
connectAttr "biped:right_upper_arm_rotateZ.o" "biped:right_upper_arm.rz";
connectAttr "biped:right_upper_arm_rotateY.o" "biped:right_upper_arm.ry";
connectAttr "biped:right_forearm_rotateZ.o" "biped:right_forearm.rz";
connectAttr "biped:right_forearm_rotateY.o" "biped:right_forearm.ry";
connectAttr "biped:right_hand_rotateZ.o" "biped:right_hand.rz";
connectAttr "biped:right_fingers_rotateZ.o" "biped:right_fingers.rz";
connectAttr "prop_parentConstraint1_w0.o" "prop_parentConstraint1.w0";
connectAttr "prop_parentConstraint1_w1.o" "prop_parentConstraint1.w1";
connectAttr "prop_parentConstraint1.ctx" "prop.tx";
connectAttr "prop_parentConstraint1.cty" "prop.ty";
connectAttr "prop_parentConstraint1.ctz" "prop.tz";
connectAttr "prop_parentConstraint1.crx" "prop.rx";
connectAttr "prop_parentConstraint1.cry" "prop.ry";
connectAttr "prop_parentConstraint1.crz" "prop.rz";
connectAttr "prop.ro" "prop_parentConstraint1.cro";
connectAttr "prop.pim" "prop_parentConstraint1.cpim";
connectAttr "prop.rp" "prop_parentConstraint1.crp";
connectAttr "prop.rpt" "prop_parentConstraint1.crt";
connectAttr "biped:right_hand.t" "prop_parentConstraint1.tg[0].tt";
connectAttr "biped:right_hand.rp" "prop_parentConstraint1.tg[0].trp";
connectAttr "biped:right_hand.rpt" "prop_parentConstraint1.tg[0].trt";
connectAttr "biped:right_hand.r" "prop_parentConstraint1.tg[0].tr";
connectAttr "biped:right_hand.ro" "prop_parentConstraint1.tg[0].tro";
connectAttr "biped:right_hand.s" "prop_parentConstraint1.tg[0].ts";
connectAttr "biped:right_hand.pm" "prop_parentConstraint1.tg[0].tpm";
connectAttr "biped:right_hand.jo" "prop_parentConstraint1.tg[0].tjo";
connectAttr "biped:right_hand.ssc" "prop_parentConstraint1.tg[0].tsc";
connectAttr "biped:right_hand.is" "prop_parentConstraint1.tg[0].tis";
connectAttr "prop_parentConstraint1.w0" "prop_parentConstraint1.tg[0].tw";
connectAttr "biped:left_hand.t" "prop_parentConstraint1.tg[1].tt";
connectAttr "biped:left_hand.rp" "prop_parentConstraint1.tg[1].trp";
connectAttr "biped:left_hand.rpt" "prop_parentConstraint1.tg[1].trt";
connectAttr "biped:left_hand.r" "prop_parentConstraint1.tg[1].tr";
connectAttr "biped:left_hand.ro" "prop_parentConstraint1.tg[1].tro";
connectAttr "biped:left_hand.s" "prop_parentConstraint1.tg[1].ts";
connectAttr "biped:left_hand.pm" "prop_parentConstraint1.tg[1].tpm";
connectAttr "biped:left_hand.jo" "prop_parentConstraint1.tg[1].tjo";
connectAttr "biped:left_hand.ssc" "prop_parentConstraint1.tg[1].tsc";
connectAttr "biped:left_hand.is" "prop_parentConstraint1.tg[1].tis";
connectAttr "prop_parentConstraint1.w1" "prop_parentConstraint1.tg[1].tw";
// End of walking_biped.ma
