// Scales the stage in browsers whose style sheets cannot divide two lengths; see
// screen.css.

export function fitStage() {
  if (CSS.supports("scale", "tan(atan2(100vw, 1px))")) return;
  const stage = document.getElementById("stage");
  const fit = () => {
    const scale = Math.min(innerWidth / stage.offsetWidth, innerHeight / stage.offsetHeight);
    stage.style.setProperty("--scale", scale);
  };
  new ResizeObserver(fit).observe(stage);
  addEventListener("resize", fit);
  fit();
}
