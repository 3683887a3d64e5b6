// Result and type codes of the acedXxx functions.
#pragma once

// How a call ended.
constexpr int RTNORM = 5100;
constexpr int RTERROR = -5001;
constexpr int RTCAN = -5002;
constexpr int RTREJ = -5003;
constexpr int RTFAIL = -5004;
constexpr int RTKWORD = -5005;
constexpr int RTINPUTTRUNCATED = -5008;

// What a result buffer holds.
constexpr short RTNONE = 5000;
constexpr short RTREAL = 5001;
constexpr short RTPOINT = 5002;
constexpr short RTSHORT = 5003;
constexpr short RTSTR = 5005;
constexpr short RTENAME = 5006;
constexpr short RTPICKS = 5007;
constexpr short RT3DPOINT = 5009;
constexpr short RTLONG = 5010;
constexpr short RTVOID = 5014;
constexpr short RTLB = 5016;
constexpr short RTLE = 5017;
constexpr short RTNIL = 5019;
constexpr short RTT = 5021;
constexpr short RTMODELESS = 5027;
