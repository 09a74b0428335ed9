// Two boxes side by side along x: 0.2 of concrete, then 0.1 of insulation, 1 x 1 across.
SetFactory("OpenCASCADE");
Box(1) = {0, 0, 0, 0.2, 1, 1};
Box(2) = {0.2, 0, 0, 0.1, 1, 1};
Coherence;
Physical Volume("concrete", 1) = {1};
Physical Volume("insulation", 2) = {2};
Physical Surface("warm", 10) = Surface In BoundingBox{-1e-6, -1e-6, -1e-6, 1e-6, 1 + 1e-6, 1 + 1e-6};
Physical Surface("cold", 20) = Surface In BoundingBox{0.3 - 1e-6, -1e-6, -1e-6, 0.3 + 1e-6, 1 + 1e-6, 1 + 1e-6};
