#!/usr/bin/env python3
"""Normals and curvature of a point cloud, from the covariances of neighbourhoods: point_cloud.py PICTURE [POINTS]

The cloud is a scan made here: a knot of tube with a relief, seen by noisy rays. The normal of a point is the direction
in which its neighbours vary least, an eigenvector of their covariance; the surface variation w0 / (w0 + w1 + w2) tells
how much the surface bends (Pauly, Gross, Kobbelt, Efficient simplification of point-sampled surfaces, 2002).
"""
import sys
import time

import matplotlib
import numpy as np
from scipy.spatial import cKDTree

import kvlm as la

matplotlib.use("Agg")
import matplotlib.pyplot as plt


def scan(count, rng):
    """Points of a trefoil tube with grooves around it, and the true normals of the tube without grooves."""
    t, phi = rng.uniform(0, 2 * np.pi, (2, count))

    def curve(t):
        return np.stack([np.sin(t) + 2 * np.sin(2 * t), np.cos(t) - 2 * np.cos(2 * t), -np.sin(3 * t)], axis=-1)

    step = 1e-4
    tangent = curve(t + step) - curve(t - step)
    tangent /= la.norm(tangent, axis=-1, keepdims=True)
    side = la.cross(tangent, np.broadcast_to([0.0, 0, 1], tangent.shape))
    side /= la.norm(side, axis=-1, keepdims=True)
    normal = np.cos(phi)[:, None] * side + np.sin(phi)[:, None] * la.cross(side, tangent)
    groove = 0.05 * np.tanh(6 * np.sin(24 * t + 2 * phi))
    radius = 0.55 + groove + rng.normal(0, 0.003, count)
    return curve(t) + radius[:, None] * normal, normal


def main(picture, count="100000"):
    rng = np.random.default_rng(3)
    points, outside = scan(int(count), rng)
    neighbours = cKDTree(points).query(points, 24)[1]

    start = time.perf_counter()
    near = points[neighbours] - points[neighbours].mean(axis=1, keepdims=True)
    covariances = la.matmul(near.swapaxes(-1, -2), near) / near.shape[1]
    gathered = time.perf_counter()
    w, v = la.eigh(covariances)
    solved = time.perf_counter()
    w_numpy, _ = np.linalg.eigh(covariances)
    numpys = time.perf_counter()

    normals = v[:, :, 0] * np.sign(np.einsum("ij,ij->i", v[:, :, 0], outside))[:, None]
    variation = w[:, 0] / w.sum(axis=1)
    print(f"{len(points)} covariances: gathered in {gathered - start:.3f} s, eigh {solved - gathered:.3f} s, "
          f"numpy's {numpys - solved:.3f} s; values agree within {np.abs(w - w_numpy).max():.1e}")
    print(f"median angle between the normals and those of the smooth tube: "
          f"{np.degrees(np.median(np.arccos(np.clip((normals * outside).sum(axis=1), -1, 1)))):.1f} degrees")

    # Turned towards the viewer: z is what is nearest.
    turn = la.matmul([[1, 0, 0], [0, 0.82, -0.57], [0, 0.57, 0.82]], [[0.9, -0.43, 0], [0.43, 0.9, 0], [0, 0, 1]])
    seen, light = la.matvec(turn, points), la.matvec(turn, normals)
    order = np.argsort(seen[:, 2])[light[np.argsort(seen[:, 2]), 2] > -0.1]
    shade = np.clip(light[order] @ np.array([-0.4, 0.5, 0.77]), 0, 1)

    figure, axes = plt.subplots(1, 2, figsize=(13, 6.4), facecolor="#11151c")
    normal_colours = (light[order] * 0.5 + 0.5) * (0.45 + 0.75 * shade[:, None])
    bend = plt.get_cmap("inferno")(np.clip(variation[order] / np.quantile(variation, 0.95), 0, 1))[:, :3]
    for axis, colours, title in zip(axes, (normal_colours, (0.12 + 0.88 * bend) * (0.4 + 0.6 * shade[:, None])),
                                    ("normals", "surface variation")):
        axis.scatter(seen[order, 0], seen[order, 1], s=20, c=np.clip(colours, 0, 1), linewidths=0)
        axis.set_aspect("equal")
        axis.axis("off")
        axis.set_title(f"{title} of {len(points):,} points".replace(",", " "), color="w")
    figure.tight_layout()
    figure.savefig(picture, dpi=66, facecolor=figure.get_facecolor())


main(*sys.argv[1:])
