#!/usr/bin/env python3
"""Strain and stress of a bar of finite elements that is bent and twisted: bar.py PICTURE

The bar is cut into tetrahedra. Of each the deformation gradient F = Ds * inv(Dm), of the edges after and before; its
polar decomposition F = R*U, U = sqrt(F'F) by eigh, R = F * inv(U); the logarithmic strain log(U), and the stress of
isotropic elasticity, whose greatest value is drawn as von Mises has it.
"""
import sys
import time

import matplotlib
import numpy as np

import kvlm as la

matplotlib.use("Agg")
import matplotlib.pyplot as plt
from mpl_toolkits.mplot3d.art3d import Poly3DCollection

YOUNG, POISSON = 50.0, 0.45  # MPa: a stiff rubber
# Six tetrahedra around the diagonal of a cube from corner 0 to corner 7, corners numbered by the bits x, y, z.
TETRAHEDRA = np.array([[0, 7, 1, 3], [0, 7, 3, 2], [0, 7, 2, 6], [0, 7, 6, 4], [0, 7, 4, 5], [0, 7, 5, 1]])


def bar(cells, size):
    """Nodes, and the four node numbers of each tetrahedron."""
    axes = [np.linspace(0, length, k + 1) for k, length in zip(cells, size)]
    nodes = np.stack(np.meshgrid(*axes, indexing="ij"), axis=-1).reshape(-1, 3)
    number = np.arange(len(nodes)).reshape([k + 1 for k in cells])
    corners = np.stack([number[x:x + cells[0], y:y + cells[1], z:z + cells[2]]
                        for z in (0, 1) for y in (0, 1) for x in (0, 1)], axis=-1).reshape(-1, 8)
    return nodes, corners[:, TETRAHEDRA].reshape(-1, 4)


def deform(nodes, size, bend=1.1, twist=1.3):
    """Bent to a circle in the plane x z, by an angle in all, and twisted; lengths in the middle stay."""
    x, y, z = (nodes - [0, size[1] / 2, size[2] / 2]).T
    angle = twist * (x / size[0]) ** 2
    y, z = y * np.cos(angle) - z * np.sin(angle), y * np.sin(angle) + z * np.cos(angle)
    turn, radius = bend * x / size[0], size[0] / bend
    return np.stack([(radius - z) * np.sin(turn), y, radius - (radius - z) * np.cos(turn)], axis=-1)


def strain_and_stress(rest, moved):
    """Of tetrahedra (..., 4, 3): R, log(U) and the stress in the frame of the body, all (..., 3, 3)."""
    edges, now = ((x[..., 1:, :] - x[..., :1, :]).swapaxes(-1, -2) for x in (rest, moved))
    f = la.matmul(now, la.inv(edges))
    w, v = la.eigh(la.matmul(f.swapaxes(-1, -2), f))
    vt = v.swapaxes(-1, -2)
    u = la.matmul(v * np.sqrt(w)[..., None, :], vt)
    strain = la.matmul(v * (0.5 * np.log(w))[..., None, :], vt)
    shear = YOUNG / (2 * (1 + POISSON))
    volume = YOUNG * POISSON / ((1 + POISSON) * (1 - 2 * POISSON)) * la.trace(strain)
    stress = 2 * shear * strain + volume[..., None, None] * np.eye(3)
    return la.matmul(f, la.inv(u)), u, strain, stress


def main(picture):
    cells, size = (120, 12, 12), (10.0, 1.0, 1.0)
    nodes, elements = bar(cells, size)
    moved = deform(nodes, size)
    start = time.perf_counter()
    r, u, strain, stress = strain_and_stress(nodes[elements], moved[elements])
    elapsed = time.perf_counter() - start
    deviator = stress - la.trace(stress)[..., None, None] / 3 * np.eye(3)
    mises = np.sqrt(1.5) * la.norm(deviator, axis=(-2, -1))
    departure = np.abs(la.matmul(r.swapaxes(-1, -2), r) - np.eye(3)).max()
    print(f"{len(elements)} elements in {elapsed:.3f} s: R'R departs from I by {departure:.1e}, "
          f"principal strains from {la.eigvalsh(strain).min():.3f} to {la.eigvalsh(strain).max():.3f}, "
          f"greatest von Mises stress {mises.max():.1f} MPa")

    # Faces that belong to one element alone are the surface.
    faces = elements[:, [[1, 2, 3], [0, 2, 3], [0, 1, 3], [0, 1, 2]]].reshape(-1, 3)
    _, first, uses = np.unique(np.sort(faces, axis=1), axis=0, return_index=True, return_counts=True)
    first = first[uses == 1]
    triangles, value = moved[faces[first]], mises[first // 4]
    normal = la.cross(triangles[:, 1] - triangles[:, 0], triangles[:, 2] - triangles[:, 0])
    normal /= la.norm(normal, axis=-1, keepdims=True)
    shade = 0.6 + 0.4 * np.abs(normal @ np.array([0.3, -0.8, 0.52]))

    figure = plt.figure(figsize=(10, 4.6))
    axis = figure.add_axes([0, 0, 0.9, 0.96], projection="3d")
    colour = plt.get_cmap("turbo")(value / mises.max())
    colour[:, :3] *= shade[:, None]
    axis.add_collection3d(
        Poly3DCollection(triangles, facecolors=colour, edgecolors=colour, linewidths=0.2, clip_on=False))
    low, high = moved.min(axis=0), moved.max(axis=0)
    axis.set(xlim=(low[0], high[0]), ylim=(low[1], high[1]), zlim=(low[2], high[2]))
    axis.set_box_aspect(high - low, zoom=1.9)
    axis.view_init(16, -72)
    axis.axis("off")
    scale = matplotlib.cm.ScalarMappable(matplotlib.colors.Normalize(0, mises.max()), "turbo")
    figure.colorbar(scale, cax=figure.add_axes([0.88, 0.18, 0.015, 0.64]), label="von Mises stress, MPa")
    figure.suptitle(f"A bar of {len(elements)} elements, bent and twisted")
    figure.savefig(picture, dpi=80)


main(*sys.argv[1:])
