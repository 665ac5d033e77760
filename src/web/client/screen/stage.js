// Scales the stage in browsers whose style sheets cannot divide two lengths; see
// screen.css.

export function fitStage() {
  if (CSS.supports("scale", "tan(atan2(100vw, 1px))")) return;
  const stage = document.getElementById("stage");
  const count = (name) => Number(getComputedStyle(stage).getPropertyValue(name)) || 1;
  const fit = () => {
    const width = innerWidth * count("--columns");
    const height = innerHeight * count("--rows");
    const scale = Math.min(width / stage.offsetWidth, height / stage.offsetHeight);
    stage.style.setProperty("--scale", scale);
  };
  new ResizeObserver(fit).observe(stage);
  addEventListener("resize", fit);
  fit();
}
