// A chart that appears is there at once; only changes move. Some kinds of series have
// times of their own, so that it is stated for each.
export const motion = {
  animationDuration: 0,
  animationDurationUpdate: 300,
  animationEasingUpdate: "cubicOut",
  animationThreshold: 1e6,
};
