#pragma once

/**
 * How much smaller the canvas is drawn on a narrow screen, by the screen's available width in
 * pixels: 1.0 from 1920 on, 0.5 below 1280, in proportion between.
 */
double screenScale(int p_width);

/** A zoom factor held to exact tenths: sums of 0.1 in binary drift away from them. */
double zoomTenths(double p_factor);
