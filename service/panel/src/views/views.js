// SPDX-License-Identifier: MIT
// The views beside the pages of nodes, in the order of the navigation.

import { texts } from '../texts/panel.js';
import { Waves } from '../waves/Waves.js';
import { Favourites } from './Favourites.js';
import { History } from './History.js';
import { Home } from './Home.js';

/** Each with the part of the address that leads to it. */
export const views = [
    { name: '', title: texts.views.home, view: Home },
    { name: 'favourites', title: texts.views.favourites, view: Favourites },
    { name: 'waves', title: texts.views.waves, view: Waves },
    { name: 'history', title: texts.views.history, view: History }
];
